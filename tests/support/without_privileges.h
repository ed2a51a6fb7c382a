#pragma once

#include <unistd.h>

#include <QtGlobal>

namespace quorvex {

/// Without the rights of the superuser, who is refused nothing, where the tests run as one.
class WithoutPrivileges {
public:
    WithoutPrivileges() : before_(::geteuid()) {
        constexpr uid_t kNobody = 65534;
        if (before_ == 0 && ::setresuid(kNobody, kNobody, before_) != 0)
            qFatal("the superuser's rights cannot be laid down");
    }
    ~WithoutPrivileges() {
        if (::setresuid(before_, before_, before_) != 0)
            qFatal("the rights cannot be taken back");
    }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

private:
    uid_t before_;
};

}  // namespace quorvex
