#pragma once

#include "VeltoError.h"

#include <QString>

// Why the working file of a card was not read.
class WorkingFileError : public VeltoError {
public:
    enum class Reason { tooLarge, notText, unreadable };

    // `detail` is the system's own words for an unreadable file, and unused otherwise.
    explicit WorkingFileError(Reason reason, const QString &detail = {});

    [[nodiscard]] Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};
