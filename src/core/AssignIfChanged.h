#pragma once

#include <utility>

// Stores `value` in `field` and answers whether that changed it, so that a setter notifies its
// observers only for a new value.
template <typename Field, typename Value>
bool assignIfChanged(Field &field, Value &&value)
{
    if (field == value)
        return false;
    field = std::forward<Value>(value);
    return true;
}
