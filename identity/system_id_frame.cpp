#include "identity/system_id_frame.h"

#include "form/key_filter.h"
#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

SystemIdFrame::SystemIdFrame(CommandLink& link, SettingsImage& image, QWidget* parent)
    : Frame(QStringLiteral("System ID (All Hex)"), parent),
      textEic_(makeHexField(this, "TextEic", 4, "Equipment Installer's Code (00EC for Tarvin)")),
      textFpn_(makeHexField(this, "TextFpn", 4, "Quorvex System ID (Only 2nd and 4th digits used)")),
      textFps_(makeHexField(this, "TextFps", 1, "Matrix System Number (0-F)")),
      textParkB_(makeHexField(this, "TextParkB", 10)),
      systemId_(link, image, {parkB_, eic_, fpn_, fps_}) {
    connect(textEic_, &QLineEdit::textChanged, this, [this] { systemId_.TextEic_Change(); });
    connect(textFpn_, &QLineEdit::textChanged, this, [this] { systemId_.TextFpn_Change(); });
    connect(textFps_, &QLineEdit::textChanged, this, [this] { systemId_.TextFps_Change(); });
    for (FieldEdit* edit : {textEic_, textFpn_, textFps_, textParkB_}) {
        edit->setKeyFilter(upperCased);
        edit->onKeyPress([&link](char16_t) { link.status("", kBlack); });
    }
    textParkB_->onKeyUp([this] { systemId_.TextParkB_KeyUp(); });

    QGridLayout* rows = makeGrid(this);
    rows->addLayout(layOutFields(), 0, 0);
    rows->addLayout(layOutButtons(), 1, 0);
}

QLayout* SystemIdFrame::layOutFields() {
    QLabel* labelFpn = makeLabel(this, "LabelFpn", "FPN", textFpn_);
    labelFpn->setToolTip(QStringLiteral("Fur Character Quorvex System ID"));  // "Fur" as intended
    auto* fields = new QHBoxLayout;
    fields->setSpacing(pixels(grid::kGap));
    for (auto [label, edit] : {std::pair{makeLabel(this, "LabelEic", "EIC", textEic_), textEic_},
                               {labelFpn, textFpn_},
                               {makeLabel(this, "LabelFps", "FPS", textFps_), textFps_}})
        fields->addLayout(makeLabelled(label, edit));
    fields->addStretch();
    fields->addLayout(makeLabelled(makeLabel(this, "LabelParkB", "PARK B", textParkB_), textParkB_));
    return fields;
}

QLayout* SystemIdFrame::layOutButtons() {
    QPushButton* byDefault =
        makeButton(this, "CommandDefault", "Default", "Set the Default/Recommended PARK B");
    QPushButton* hpPari =
        makeButton(this, "CommandHpPari", "HP PARI", "Get the PARI to be set in the HP DECT Testset");
    QPushButton* update = makeButton(this, "CommandSetSysID", "Update", "Send System Id to Beltpack");
    onClick(byDefault, [this] { systemId_.CommandDefault_Click(); });
    onClick(hpPari, [this] { systemId_.CommandHpPari_Click(); });
    update->setAccessibleName(QStringLiteral("Update System ID"));
    onClick(update, [this] { systemId_.CommandSetSysID_Click(); });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(pixels(grid::kGap));
    for (QPushButton* button : {byDefault, hpPari, update})
        buttons->addWidget(button);
    return buttons;
}

}  // namespace quorvex
