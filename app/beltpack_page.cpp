#include "app/beltpack_page.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvex {

class BeltpackPage::Neighbours : public BeltpackReadNeighbours, public SettingsFileNeighbours {
public:
    Neighbours(BeltpackPage& page, RfModule& rfModule) : page_(page), rfModule_(rfModule) {}

    int rfModuleType() const override { return rfModule_.type(); }
    void changeRfModuleType(int type) override { rfModule_.change(static_cast<std::int16_t>(type)); }
    void showSystemId(const std::string& parkB) override { page_.systemId_->systemId().showParkB(parkB); }
    void requestDectVersion() override { page_.dectVersion_->version().request(); }
    void enableSettingsButtons() override { page_.transfer_->enableSettingsButtons(); }

private:
    BeltpackPage& page_;
    RfModule& rfModule_;
};

BeltpackPage::BeltpackPage(CommandLink& link, SettingsImage& image, QWidget* parent)
    : QWidget(parent),
      link_(link),
      image_(image),
      transfer_(new TransferFrame(image, this)),
      rfCarriers_(new RfCarriersFrame(link, image)),
      editors_(new EditorsFrame(image, rfCarriers_->regulations(), this)),
      beltpackId_(new BeltpackIdFrame(link, image, this)),
      systemId_(new SystemIdFrame(link, image, this)),
      parkLength_(new ParkLengthFrame(link, image, this)),
      dectVersion_(new DectVersionFrame(link, DectVersionFrame::kBeltpack, this)),
      calibration_(new CalibFrameWidget(CalibFrameWidget::kBeltpack)),
      fileDialog_(this),
      write_(link, image),
      production_(link, image, write_) {
    auto* work = new QVBoxLayout;
    work->addWidget(transfer_);
    work->addSpacing(14);
    work->addWidget(editors_);
    work->addStretch();

    auto* identity = new QVBoxLayout;
    identity->addWidget(beltpackId_);
    identity->addWidget(systemId_);
    identity->addWidget(parkLength_);
    identity->addWidget(dectVersion_);
    identity->addStretch();

    // The last of the page, for the order of the Tab key.
    rfCarriers_->setParent(this);
    calibration_->setParent(this);
    auto* radio = new QVBoxLayout;
    radio->addWidget(rfCarriers_);
    radio->addWidget(calibration_);
    radio->addStretch();

    auto* columns = new QHBoxLayout(this);
    columns->setSpacing(16);
    columns->addLayout(work);
    columns->addLayout(identity);
    columns->addLayout(radio);
    columns->addStretch();
}

BeltpackPage::~BeltpackPage() = default;

void BeltpackPage::connectTo(RfModule& rfModule, CalibRun& calibRun) {
    neighbours_ = std::make_unique<Neighbours>(*this, rfModule);
    read_ = std::make_unique<BeltpackRead>(
        link_, image_, editors_->editors(),
        BeltpackFields{beltpackId_->beltpackId(), rfCarriers_->rfCarriers(), parkLength_->pli(),
                       calibration_->fmDeviation(), calibration_->freqAccuracy(),
                       calibration_->freqAccuracyRx(), calibration_->freqAccuracyTx(),
                       calibration_->rssiThreshold()},
        *neighbours_);
    file_ = std::make_unique<SettingsFile>(
        link_, image_, fileDialog_,
        SettingsFileFields{beltpackId_->beltpackId(), rfCarriers_->rfCarriers(), calibration_->fmDeviation(),
                           calibration_->freqAccuracy(), calibration_->freqAccuracyRx(),
                           calibration_->freqAccuracyTx()},
        *neighbours_);
    transfer_->connectTo(*read_, write_, *file_);
    editors_->connectTo(production_);
    calibration_->onCalibrate([this, &calibRun] {
        calibRun.CommandCalibBp_Click(calibration_->fields(), calibration_->rssiThreshold());
    });
}

}  // namespace quorvex
