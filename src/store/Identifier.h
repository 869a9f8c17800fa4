#pragma once

#include <QString>

// A fresh random id for a new record: a UUID in upper-case canonical form, 36 characters. Ids are
// made here by the writing code, never by the database.
[[nodiscard]] QString newIdentifier();
