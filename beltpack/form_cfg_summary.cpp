#include "beltpack/form_cfg_summary.h"

#include <QHBoxLayout>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QtMath>

#include "link/form.h"
#include "link/latin1.h"

namespace quorvex {

namespace {

/// Lets `edit` show its whole text without scrolling.
void fitToText(QTextEdit* edit) {
    const QSizeF text = edit->document()->size();
    constexpr int kSpare = 6;  // so that rounding never brings a scroll bar up
    const int frame = 2 * edit->frameWidth() + kSpare;
    edit->setMinimumSize(qCeil(text.width()) + frame, qCeil(text.height()) + frame);
}

}  // namespace

FormCfgSummary::FormCfgSummary(const std::string& SummaryText, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FormCfgSummary"));
    setWindowTitle(QStringLiteral("Registration Configuration Summary"));

    auto* text = new QTextEdit(this);
    text->setObjectName(QStringLiteral("TextSummary"));
    text->setReadOnly(true);
    text->setLineWrapMode(QTextEdit::NoWrap);
    QFont face(QStringLiteral("Courier"));
    face.setStyleHint(QFont::Monospace, QFont::PreferMatch);
    face.setPointSizeF(9.75);
    text->setFont(face);
    text->setPlainText(toQt(SummaryText));
    fitToText(text);

    QPushButton* ok = makeButton(this, "CommandOK", "&OK");
    ok->setDefault(true);
    onClick(ok, [this] { accept(); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    auto* column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addLayout(buttons);
    ok->setFocus();
}

}  // namespace quorvex
