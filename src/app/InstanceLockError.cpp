#include "InstanceLockError.h"

using namespace Qt::StringLiterals;

namespace {

QString describe(const InstanceLockError::Reason &reason)
{
    if (const auto *held = std::get_if<InstanceLockError::HeldElsewhere>(&reason))
        return u"Velto is already running with the board in “%1”. Only one Velto at a time can write to it."_s.arg(
            held->container);
    const auto &unusable = std::get<InstanceLockError::Unusable>(reason);
    return u"Velto could not lock “%1”: %2"_s.arg(unusable.path, unusable.underlying);
}

} // namespace

InstanceLockError::InstanceLockError(Reason reason) : VeltoError(describe(reason)), m_reason(std::move(reason)) {}
