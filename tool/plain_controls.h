#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "link/controls.h"
#include "link/radio_module.h"

namespace quorvex::tool {

// Controls that nobody sees. They take whatever a unit sends, for there is nothing that it does not fit.

class TakenCheck : public CheckField {
public:
    int value() const override { return value_; }
    void setValue(int value) override { value_ = value; }

private:
    int value_ = 0;
};

class TakenOption : public OptionGroup {
public:
    void select(int /*index*/) override {}
};

class TakenItem : public OneItemList {
public:
    void refill(const std::vector<std::string>& /*items*/) override {}
    int topIndex() const override { return top_; }
    void setTopIndex(int index) override { top_ = index; }

private:
    int top_ = 0;
};

/// The radio module that the unit turns out to carry. It is not stored: the window's own setting stays.
class FoundModule : public RadioModule {
public:
    std::int16_t type() const override { return type_; }
    void change(std::int16_t type) override { type_ = type; }

private:
    std::int16_t type_ = kRm5;
};

}  // namespace quorvex::tool
