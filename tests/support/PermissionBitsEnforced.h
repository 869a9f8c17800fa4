#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>

// While alive, the calling thread, and every thread it starts meanwhile, is held to the permission
// bits of files even as root: it drops the capability that overrides them from its effective set
// and raises it again at the end. Without this, a read-only file could not be tested where the
// tests run as root.
class PermissionBitsEnforced {
public:
    PermissionBitsEnforced()
    {
        if (::syscall(SYS_capget, &m_header, m_saved) != 0)
            return;
        m_dropped = (m_saved[0].effective & overrideBit) != 0;
        if (!m_dropped) {
            m_isEnforced = true;
            return;
        }
        __user_cap_data_struct reduced[_LINUX_CAPABILITY_U32S_3];
        std::copy(std::begin(m_saved), std::end(m_saved), std::begin(reduced));
        reduced[0].effective &= ~overrideBit;
        m_isEnforced = ::syscall(SYS_capset, &m_header, reduced) == 0;
        m_dropped = m_isEnforced;
    }
    ~PermissionBitsEnforced()
    {
        if (m_dropped)
            ::syscall(SYS_capset, &m_header, m_saved);
    }

    PermissionBitsEnforced(const PermissionBitsEnforced &) = delete;
    PermissionBitsEnforced &operator=(const PermissionBitsEnforced &) = delete;

    [[nodiscard]] bool isEnforced() const { return m_isEnforced; }

private:
    static constexpr __u32 overrideBit = 1u << CAP_DAC_OVERRIDE;

    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_saved[_LINUX_CAPABILITY_U32S_3]{};
    bool m_dropped = false;
    bool m_isEnforced = false;
};
