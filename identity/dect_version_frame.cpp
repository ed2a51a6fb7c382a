#include "identity/dect_version_frame.h"

#include "form/make.h"

namespace quorvex {

namespace {
constexpr int kVersionCharacters = 14;
}

DectVersionFrame::DectVersionFrame(CommandLink& link, const Names& names, QWidget* parent)
    : Frame(QStringLiteral("DECT Firmware Version Number"), parent),
      edit_(makeField(this, names.field, kVersionCharacters)),
      version_(link, names.request, field_) {
    edit_->setAccessibleName(title());
    edit_->setValidator(nullptr);  // what the unit answers is shown as it stands
    QPushButton* request = makeButton(this, names.button, "Request");
    request->setAccessibleName(QStringLiteral("Request DECT Firmware Version Number"));
    onClick(request, [this] { version_.request(); });

    makeGrid(this)->addLayout(makeRow(edit_, request), 0, 0);
}

}  // namespace quorvex
