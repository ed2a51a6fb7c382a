#pragma once

#include <string>
#include <vector>

#include "link/controls.h"
#include "tests/support/journal.h"

namespace quorvex {

// Controls of the window in memory. What an operation sets is noted: "TextPli = 1F".

class FakeField : public TextField {
public:
    FakeField(Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}

    std::string text() const override { return text_; }
    void setText(std::string_view text) override;
    /// As if typed: without a note.
    void type(std::string_view text) { text_ = std::string(text); }

private:
    Journal& journal_;
    std::string name_;
    std::string text_;
};

/// Refuses what a check box cannot show, as the seam says.
class FakeCheck : public CheckField {
public:
    FakeCheck(Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}

    int value() const override { return value_; }
    void setValue(int value) override;

private:
    Journal& journal_;
    std::string name_;
    int value_ = 0;
};

class FakeOptions : public OptionGroup {
public:
    FakeOptions(Journal& journal, std::vector<std::string> names)
        : journal_(journal), names_(std::move(names)) {}

    void select(int index) override;
    /// Index of the option that is on; -1 for none.
    int selected() const { return selected_; }

private:
    Journal& journal_;
    std::vector<std::string> names_;
    int selected_ = -1;
};

/// Noted as "BPRegulations: STANDARD - EUROPE" when it is scrolled, "BPRegulations refilled: a, b" when
/// filled.
class FakeList : public OneItemList {
public:
    FakeList(Journal& journal, std::string name) : journal_(journal), name_(std::move(name)) {}

    void refill(const std::vector<std::string>& items) override;
    int topIndex() const override { return topIndex_; }
    void setTopIndex(int index) override;
    /// The visible item.
    std::string top() const;
    const std::vector<std::string>& items() const { return items_; }

private:
    Journal& journal_;
    std::string name_;
    std::vector<std::string> items_;
    int topIndex_ = 0;
};

}  // namespace quorvex
