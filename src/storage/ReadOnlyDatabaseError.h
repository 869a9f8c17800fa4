#pragma once

#include "VeltoError.h"

#include <QString>

#include <variant>

// Why the database cannot be written although it opened: the file itself refuses writes, or the
// folder around it does, where the journal files beside it must be made.
class ReadOnlyDatabaseError : public VeltoError {
public:
    struct FileReadOnly {
        QString path;
        bool operator==(const FileReadOnly &) const = default;
    };
    struct FolderReadOnly {
        QString folder;
        bool operator==(const FolderReadOnly &) const = default;
    };
    using Reason = std::variant<FileReadOnly, FolderReadOnly>;

    explicit ReadOnlyDatabaseError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};
