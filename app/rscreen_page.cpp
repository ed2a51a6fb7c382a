#include "app/rscreen_page.h"

#include <QVBoxLayout>

namespace quorvex {

RScreenPage::RScreenPage(CommandLink& link, QWidget* parent)
    : QWidget(parent), screen_(new RScreenFrame(link, this)) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(screen_, 0, Qt::AlignLeft);
    column->addStretch();
}

}  // namespace quorvex
