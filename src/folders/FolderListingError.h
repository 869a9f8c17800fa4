#pragma once

#include "VeltoError.h"

#include <QString>

// A folder whose contents could not be read, with the system's error number so that a caller can
// tell a folder that is gone from one it may not read.
class FolderListingError : public VeltoError {
public:
    FolderListingError(const QString &path, int errorCode);

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] int errorCode() const { return m_errorCode; }

private:
    QString m_path;
    int m_errorCode;
};
