#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

// The base of every failure Velto reports: what() is the text a user reads, as it stands.
class VeltoError : public std::exception {
public:
    explicit VeltoError(const QString &text);

    [[nodiscard]] const char *what() const noexcept override;
    [[nodiscard]] QString text() const;

private:
    QByteArray m_utf8;
};
