#pragma once

#include "FolderPicker.h"
#include "Task.h"

#include <QList>
#include <QUrl>

class QFileDialog;

// The toolkit's own folder dialog, for desktops whose portal does not answer: folders only, several
// at once when asked, the message on a line above them and the prompt on the accepting button.
namespace WidgetFolderDialog {

// The dialog, built but not shown; its owner deletes it.
[[nodiscard]] QFileDialog *make(const FolderPickerRequest &request);

// Shows the dialog without blocking and resumes with the chosen folders, or none on cancel.
Task<QList<QUrl>> choose(FolderPickerRequest request);

} // namespace WidgetFolderDialog
