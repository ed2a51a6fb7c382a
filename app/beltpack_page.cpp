#include "app/beltpack_page.h"

#include "form/make.h"

namespace quorvex {

class BeltpackPage::Neighbours : public BeltpackReadNeighbours, public SettingsFileNeighbours {
public:
    explicit Neighbours(BeltpackPage& page) : page_(page) {}

    std::string showSystemId(const std::string& parkB) override {
        return page_.systemId_->systemId().showParkB(parkB);
    }
    void requestDectVersion(Operation& read) override { page_.dectVersion_->version().request(read); }
    void enableSettingsButtons() override { page_.transfer_->enableSettingsButtons(); }

private:
    BeltpackPage& page_;
};

BeltpackPage::BeltpackPage(CommandLink& link, SettingsImage& image, QWidget* parent)
    : QWidget(parent),
      link_(link),
      image_(image),
      transfer_(new TransferFrame(image, this)),
      editors_(new EditorsFrame(image, this)),
      beltpackId_(new BeltpackIdFrame(link, image, this)),
      systemId_(new SystemIdFrame(link, image, this)),
      parkLength_(new ParkLengthFrame(link, image, this)),
      dectVersion_(new DectVersionFrame(link, DectVersionFrame::kBeltpack, this)),
      rfCarriers_(
          new RfCarriersFrame(link, image, {editors_->regulationsLabel(), editors_->regulations()}, this)),
      calibration_(new CalibFrameWidget(CalibFrameWidget::beltpack(), this)),
      fileDialog_(this),
      write_(link, image),
      production_(link, image, write_) {
    placeColumns(this, {makeColumn({transfer_, editors_}),
                        makeColumn({beltpackId_, systemId_, parkLength_, dectVersion_}),
                        makeColumn({rfCarriers_, calibration_})});
    setFocusProxy(transfer_);
}

BeltpackPage::~BeltpackPage() = default;

void BeltpackPage::connectTo(RadioModule& module, CalibRun& calibRun) {
    neighbours_ = std::make_unique<Neighbours>(*this);
    read_ = std::make_unique<BeltpackRead>(
        link_, image_, module, editors_->editors(),
        BeltpackFields{beltpackId_->beltpackId(), rfCarriers_->rfCarriers(), parkLength_->pli(),
                       calibration_->fields(), calibration_->rssiThreshold()},
        *neighbours_);
    file_ = std::make_unique<SettingsFile>(
        link_, image_, fileDialog_,
        SettingsFileFields{beltpackId_->beltpackId(), rfCarriers_->rfCarriers(), calibration_->fields()},
        *neighbours_);
    transfer_->connectTo(*read_, write_, *file_);
    editors_->connectTo(production_);
    calibration_->onCalibrate([this, &calibRun] {
        calibRun.CommandCalibBp_Click(calibration_->fields(), calibration_->rssiThreshold());
    });
}

}  // namespace quorvex
