#include "form/make.h"

#include <QFontDatabase>
#include <QKeyEvent>

#include "form/guard.h"

namespace quorvex {

namespace {

constexpr int kFieldMargins = 16;

/// The toolkit lets Enter press a button in a dialog only; here it does wherever the button has the focus.
class EnterButton : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
            QPushButton::keyPressEvent(event);
        else if (!event->isAutoRepeat())
            click();
    }
};

}  // namespace

QPushButton* makeButton(QWidget* parent, const char* name, const char* caption, const char* hover) {
    auto* button = makeCaptioned<EnterButton>(parent, name, caption);
    button->setToolTip(QString::fromUtf8(hover));
    return button;
}

FieldEdit* makeField(QWidget* parent, const char* name, int characters, const char* hover) {
    auto* field = new FieldEdit(parent);
    field->setObjectName(QString::fromLatin1(name));
    field->setToolTip(QString::fromUtf8(hover));
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters +
                         kFieldMargins);
    return field;
}

FieldEdit* makeHexField(QWidget* parent, const char* name, int characters, const char* hover) {
    FieldEdit* field = makeField(parent, name, characters, hover);
    field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    field->setFixedWidth(QFontMetrics(field->font()).horizontalAdvance(QLatin1Char('0')) * characters +
                         kFieldMargins);
    return field;
}

QLabel* makeLabel(QWidget* parent, const char* name, const char* caption, QWidget* buddy) {
    auto* label = makeCaptioned<QLabel>(parent, name, caption);
    label->setBuddy(buddy);
    return label;
}

QFrame* makeLine(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setObjectName(QStringLiteral("Line1"));
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    return line;
}

QVBoxLayout* makeColumn(const std::vector<QWidget*>& frames) {
    auto* column = new QVBoxLayout;
    for (QWidget* frame : frames)
        column->addWidget(frame);
    column->addStretch();
    return column;
}

QHBoxLayout* makeButtonRow(const std::vector<QPushButton*>& buttons) {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* button : buttons)
        row->addWidget(button);
    return row;
}

void onClick(QAbstractButton* button, std::function<void()> handler) {
    QObject::connect(button, &QAbstractButton::clicked, button,
                     [handler = std::move(handler)] { guarded(handler); });
}

void setTabChain(const std::vector<QWidget*>& controls) {
    for (std::size_t i = 1; i < controls.size(); ++i)
        QWidget::setTabOrder(controls[i - 1], controls[i]);
}

}  // namespace quorvex
