#pragma once

#include "FileIdentity.h"

#include <QString>

#include <optional>

// Reads the identities of entries one after another through a descriptor of their directory, so
// that each read walks only the entry's own name rather than its whole path: folders on a board
// mostly share a parent. Keeps the last directory open; one reader per thread.
class EntryReader {
public:
    EntryReader() = default;
    ~EntryReader();
    EntryReader(const EntryReader &) = delete;
    EntryReader &operator=(const EntryReader &) = delete;

    // What FileIdentity::read gives for `path`, an absolute path.
    [[nodiscard]] std::optional<FileIdentity> read(const QString &path, FileIdentity::Detail detail);

private:
    void close();

    QString m_directory;
    int m_descriptor = -1;
};
