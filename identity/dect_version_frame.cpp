#include "identity/dect_version_frame.h"

#include <QHBoxLayout>

#include "form/make.h"

namespace quorvex {

namespace {
constexpr int kVersionCharacters = 14;
}

DectVersionFrame::DectVersionFrame(CommandLink& link, const Names& names, QWidget* parent)
    : QGroupBox(QStringLiteral("DECT Firmware Version Number"), parent),
      edit_(makeField(this, names.field, kVersionCharacters)),
      version_(link, names.request, field_) {
    edit_->setAccessibleName(title());
    edit_->setValidator(nullptr);  // what the unit answers is shown as it stands
    QPushButton* request = makeButton(this, names.button, "Request");
    onClick(request, [this] { version_.request(); });

    auto* row = new QHBoxLayout(this);
    row->addWidget(edit_);
    row->addStretch();
    row->addWidget(request);
}

}  // namespace quorvex
