#pragma once

#include <type_traits>
#include <utility>

namespace quorvex {

/// Gives a variable another value for as long as it lives. They nest.
template <typename T>
class Held {
public:
    Held(T& variable, std::type_identity_t<T> value)
        : variable_(variable), before_(std::exchange(variable, std::move(value))) {}
    ~Held() { variable_ = std::move(before_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    T& variable_;
    T before_;
};

}  // namespace quorvex
