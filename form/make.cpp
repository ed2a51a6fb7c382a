#include "form/make.h"

#include <QFontDatabase>
#include <algorithm>

#include "form/guard.h"
#include "form/lengths.h"

namespace quorvex {

namespace {

constexpr int kFieldMargins = 240;  ///< twips

void setWidth(FieldEdit* field, int characters) {
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters +
                         pixels(kFieldMargins));
}

}  // namespace

Button* makeButton(QWidget* parent, const char* name, const char* caption, const char* hover) {
    auto* button = makeCaptioned<Button>(parent, name, caption);
    button->setMinimumHeight(pixels(grid::kField));
    button->setToolTip(QString::fromUtf8(hover));
    return button;
}

FieldEdit* makeField(QWidget* parent, const char* name, int characters, const char* hover) {
    auto* field = new FieldEdit(parent);
    field->setObjectName(QString::fromLatin1(name));
    field->setToolTip(QString::fromUtf8(hover));
    field->setFixedHeight(pixels(grid::kField));
    setWidth(field, characters);
    return field;
}

FieldEdit* makeHexField(QWidget* parent, const char* name, int characters, const char* hover) {
    FieldEdit* field = makeField(parent, name, characters, hover);
    QFont face = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    face.setPointSizeF(field->font().pointSizeF());
    field->setFont(face);
    setWidth(field, characters);
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

QGridLayout* makeGrid(Frame* frame) {
    auto* layout = new QGridLayout(frame);
    // The style keeps some distance of its own.
    const QMargins styles = frame->contentsMargins();
    const int inset = pixels(grid::kFrameInset);
    layout->setContentsMargins(std::max(inset - styles.left(), 0), pixels(grid::kHeading),
                               std::max(inset - styles.right(), 0), std::max(inset - styles.bottom(), 0));
    layout->setSpacing(pixels(grid::kGap));
    return layout;
}

QVBoxLayout* makeLabelled(QWidget* label, QWidget* control) {
    auto* layout = new QVBoxLayout;
    layout->setSpacing(pixels(grid::kLabelGap));
    layout->addWidget(label);
    layout->addWidget(control);
    return layout;
}

QHBoxLayout* makeRow(QWidget* field, QPushButton* button) {
    button->setMinimumWidth(pixels(grid::kRowButton));
    auto* row = new QHBoxLayout;
    row->setSpacing(pixels(grid::kGap));
    row->addWidget(field);
    row->addStretch();
    row->addWidget(button);
    return row;
}

QVBoxLayout* makeColumn(const std::vector<QWidget*>& frames) {
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    for (QWidget* frame : frames) {
        if (frame != frames.front())
            column->addSpacing(pixels(grid::kFrameGap));
        column->addWidget(frame);
        if (frame != frames.back() || frames.size() == 1)
            column->addStretch();
    }
    return column;
}

void placeColumns(QWidget* page, const std::vector<QLayout*>& columns) {
    auto* whole = new QVBoxLayout(page);
    const int inset = pixels(grid::kInset);
    whole->setContentsMargins(inset, inset, inset, inset);
    auto* row = new QHBoxLayout;
    row->setSpacing(pixels(grid::kColumnGap));
    for (QLayout* column : columns)
        row->addLayout(column);
    row->addStretch(1);
    whole->addLayout(row);
    whole->addStretch(1);
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
