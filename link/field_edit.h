#pragma once

#include <QLineEdit>
#include <functional>

namespace quorvex {

/// A QLineEdit that tells of its keys, as handlers of this window want them.
class FieldEdit : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

    /// Called after each key release, guarded.
    void onKeyUp(std::function<void()> handler) { keyUp_ = std::move(handler); }

protected:
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    std::function<void()> keyUp_;
};

}  // namespace quorvex
