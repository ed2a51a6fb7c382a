#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace quorvex {

/// A fault of the program while it runs: a number out of range, text that is no number, a port or a file
/// that does not do what was asked. Thrown by the core; an operation that has a failure path of its own
/// catches it, every other one ends in the fault report that ends the program.
class RuntimeFault : public std::runtime_error {
public:
    RuntimeFault(int number, const std::string& description)
        : std::runtime_error(description), number_(number) {}

    /// Kind of the fault, as shown to the operator.
    int number() const { return number_; }
    /// The kind in words, without a full stop.
    std::string description() const { return what(); }
    /// What the report of an uncaught fault shows: number, an empty line, the kind in words, and what else
    /// helps.
    std::string report() const {
        return "Run-time error '" + std::to_string(number_) + "':\r\n\r\n" + description() +
               (detail_.empty() ? "" : "\r\n\r\n" + detail_);
    }
    /// The same fault with sentences, UTF-8, from which the operator sees what to mend.
    RuntimeFault with(std::string detail) const {
        RuntimeFault fault = *this;
        fault.detail_ = std::move(detail);
        return fault;
    }

    static RuntimeFault overflow() { return {6, "Overflow"}; }
    static RuntimeFault subscriptOutOfRange() { return {9, "Subscript out of range"}; }
    static RuntimeFault typeMismatch() { return {13, "Type mismatch"}; }
    static RuntimeFault invalidPropertyValue() { return {380, "Invalid property value"}; }
    static RuntimeFault fileAccess() { return {75, "Path/File access error"}; }
    static RuntimeFault noReply() { return {8019, "No reply from the unit"}; }
    static RuntimeFault portNotOpen() { return {8018, "The port is not open"}; }

private:
    int number_;
    std::string detail_;
};

}  // namespace quorvex
