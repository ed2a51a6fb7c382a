#pragma once

#include <QLabel>

namespace quorvex {

/// `LabelComPort`: the port's name, and a dot that tells at a glance whether it is open.
class PortLabel : public QLabel {
public:
    enum class State { notOpen, open, lost };

    explicit PortLabel(const QString& text, QWidget* parent = nullptr);

    void tell(const QString& text, State state, const QString& hover);
    State state() const { return state_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    State state_ = State::notOpen;
};

}  // namespace quorvex
