#include "WidgetFolderDialog.h"

#include "Later.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

// The dialog has no line for a message, so one is put above everything else in its grid.
void showMessageAbove(QFileDialog &dialog, const QString &message)
{
    auto *grid = qobject_cast<QGridLayout *>(dialog.layout());
    if (grid == nullptr)
        return;
    struct Placed {
        QLayoutItem *item = nullptr;
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
    };
    const int columns = grid->columnCount();
    QList<Placed> placed;
    while (grid->count() > 0) {
        Placed one;
        grid->getItemPosition(0, &one.row, &one.column, &one.rowSpan, &one.columnSpan);
        one.item = grid->takeAt(0);
        placed.append(one);
    }
    auto *label = new QLabel(message, &dialog);
    label->setObjectName(u"message"_s);
    label->setWordWrap(true);
    grid->addWidget(label, 0, 0, 1, columns);
    for (const Placed &one : std::as_const(placed))
        grid->addItem(one.item, one.row + 1, one.column, one.rowSpan, one.columnSpan);
}

} // namespace

QFileDialog *WidgetFolderDialog::make(const FolderPickerRequest &request)
{
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(request.prompt);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    // Choosing a folder never makes, renames or deletes one.
    dialog->setOption(QFileDialog::ReadOnly);
    dialog->setLabelText(QFileDialog::Accept, request.prompt);
    if (request.directory)
        dialog->setDirectoryUrl(*request.directory);
    // The folder mode selects one entry at a time; its list and its detail view are opened up
    // after it is set.
    if (request.allowsMultiple) {
        for (const QString &name : {u"listView"_s, u"treeView"_s}) {
            if (auto *view = dialog->findChild<QAbstractItemView *>(name))
                view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        }
    }
    showMessageAbove(*dialog, request.message);
    dialog->setWindowModality(Qt::ApplicationModal);
    return dialog;
}

Task<QList<QUrl>> WidgetFolderDialog::choose(FolderPickerRequest request)
{
    QFileDialog *dialog = make(request);
    // Kept above the window that asked, when there is one.
    if (QWindow *front = QGuiApplication::focusWindow()) {
        dialog->winId();
        dialog->windowHandle()->setTransientParent(front);
    }
    Later<QList<QUrl>> answer;
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, answer](int result) {
        dialog->deleteLater();
        answer.deliver(result == QDialog::Accepted ? dialog->selectedUrls() : QList<QUrl>());
    });
    dialog->open();
    co_return co_await answer;
}
