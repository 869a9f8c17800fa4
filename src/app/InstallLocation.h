#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

// Whether Velto runs from a place where what it saves lasts. Here the question is asked of the
// data folder, since the program itself may well sit on a read-only volume.
namespace InstallLocation {
Q_NAMESPACE
QML_ELEMENT

// Capitalised, as the views can read nothing else.
enum class Verdict { Ok, Translocated, ReadOnlyVolume };
Q_ENUM_NS(Verdict)

// A translocated copy is also on a read-only mount, so that test goes first.
[[nodiscard]] Verdict verdict(const QString &path, bool onReadOnlyVolume);

// Whether the volume that holds `path`, or the nearest folder above it that exists, is mounted
// read-only. A volume that cannot be asked counts as writable.
[[nodiscard]] bool isOnReadOnlyVolume(const QString &path);

} // namespace InstallLocation
