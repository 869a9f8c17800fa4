#pragma once

#include <QtGlobal>

#include <optional>

// What tells one folder from another at this moment: the file's number on its volume and the
// volume's number. Two readings name the same folder when both parts are equal.
struct FolderIdentity {
    quint64 fileResourceIdentifier = 0;
    std::optional<quint64> volumeIdentifier;

    bool operator==(const FolderIdentity &) const = default;
};
