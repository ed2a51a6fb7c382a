#include "beltpack/form_cfg_summary.h"

#include <QScrollBar>
#include <QTextEdit>
#include <QtMath>
#include <algorithm>

#include "form/make.h"
#include "link/qt_text.h"

namespace quorvex {

namespace {

/// Lets `edit` show its whole text without scrolling.
void fitToText(QTextEdit* edit) {
    edit->ensurePolished();
    QTextDocument* text = edit->document();
    text->setDefaultFont(edit->font());
    // Room for the frame, and enough to spare that no scroll bar comes up and takes the room of the other.
    const int spare = 2 * edit->frameWidth() + edit->verticalScrollBar()->sizeHint().width();
    edit->setMinimumSize(qCeil(text->idealWidth()) + spare, qCeil(text->size().height()) + spare);
}

}  // namespace

FormCfgSummary::FormCfgSummary(const std::string& SummaryText, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("FormCfgSummary"));
    setWindowTitle(QStringLiteral("Registration Configuration Summary"));

    auto* text = new QTextEdit(this);
    text->setObjectName(QStringLiteral("TextSummary"));
    text->setAccessibleName(windowTitle());
    text->setReadOnly(true);
    text->setLineWrapMode(QTextEdit::NoWrap);
    QFont face(QStringLiteral("Courier"));
    face.setStyleHint(QFont::Monospace, QFont::PreferMatch);
    constexpr double kLeastPoints = 9.75;
    face.setPointSizeF(std::max(kLeastPoints, font().pointSizeF()));
    text->setFont(face);
    text->setPlainText(fromLatin1(SummaryText));
    fitToText(text);

    QPushButton* ok = makeButton(this, "CommandOK", "&OK");
    ok->setDefault(true);
    onClick(ok, [this] { accept(); });

    auto* column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addLayout(makeButtonRow({ok}));
    ok->setFocus();
}

}  // namespace quorvex
