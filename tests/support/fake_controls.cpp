#include "tests/support/fake_controls.h"

#include <algorithm>

#include "link/runtime_fault.h"

namespace quorvex {

void FakeField::setText(std::string_view text) {
    text_ = std::string(text);
    journal_.note(name_ + " = " + text_);
}

void FakeCheck::setValue(int value) {
    if (value < 0 || value > 2)
        throw RuntimeFault::invalidPropertyValue();
    value_ = value;
    journal_.note(name_ + " = " + std::to_string(value));
}

void FakeOptions::select(int index) {
    selected_ = index;
    journal_.note(names_.at(static_cast<std::size_t>(index)) + " on");
}

void FakeList::refill(const std::vector<std::string>& items) {
    items_ = items;
    topIndex_ = 0;
    std::string all;
    for (const std::string& item : items)
        all += (all.empty() ? "" : ", ") + item;
    journal_.note(name_ + " refilled: " + all);
}

void FakeList::setTopIndex(int index) {
    topIndex_ = std::min(index, static_cast<int>(items_.size()) - 1);
    journal_.note(name_ + ": " + top());
}

std::string FakeList::top() const {
    return items_.empty() ? std::string() : items_.at(static_cast<std::size_t>(topIndex_));
}

}  // namespace quorvex
