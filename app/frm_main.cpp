#include "app/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/com_select.h"
#include "app/rscreen_page.h"
#include "app/version.h"
#include "calibration/form_calib.h"
#include "form/guard.h"
#include "form/message_box.h"
#include "icons/program_icon.h"
#include "link/device_facts.h"
#include "link/port_device.h"
#include "link/qt_text.h"

namespace quorvex {

namespace {

QMenu* addMenu(QMenuBar* bar, const char* name, const char* caption) {
    QMenu* menu = bar->addMenu(QString::fromLatin1(caption));
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(menu->objectName());
    return menu;
}

QAction* addItem(QMenu* menu, const char* name, const char* caption) {
    QAction* item = menu->addAction(QString::fromLatin1(caption));
    item->setObjectName(QString::fromLatin1(name));
    return item;
}

void addItem(QMenu* menu, const char* name, const char* caption, std::function<void()> handler) {
    QObject::connect(addItem(menu, name, caption), &QAction::triggered, menu,
                     [handler = std::move(handler)] { guarded(handler); });
}

}  // namespace

FrmMain::FrmMain(Machine machine)
    : port_(machine.port),
      store_(machine.store),
      statusLine_(new StatusLine(this)),
      labelComPort_(new PortLabel(QString::fromLatin1(kNoComms), this)),
      console_(*statusLine_),
      link_(machine.port, machine.loop, console_),
      portChoice_(link_, machine.port, machine.store),
      transfers_(link_),
      beltpackPage_(new BeltpackPage(link_, image_)),
      antennaPage_(new AntennaPage(link_)),
      rfModule_(machine.store,
                {beltpackPage_->calibFrame(), antennaPage_->moduleA(), antennaPage_->moduleB()}),
      rfModulePicker_(this),
      startup_(portChoice_, rfModule_, *this),
      calibRun_(link_, rfModule_, *this) {
    setObjectName(QStringLiteral("FrmMain"));
    image_.keepLog(&transfers_);
    setWindowTitle(fromLatin1(kProgramTitle));
    setWindowIcon(programIcon());
    buildMenus();
    beltpackPage_->connectTo(rfModule_, calibRun_);
    antennaPage_->connectTo(rfModule_, calibRun_);

    auto* tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("SSTab1"));
    tabs->addTab(beltpackPage_, QStringLiteral("BeltPack"));
    tabs->addTab(antennaPage_, QStringLiteral("Active Antenna"));
    tabs->addTab(new RScreenPage(link_), QStringLiteral("R-Screen"));

    auto* whole = new QWidget;
    auto* rows = new QVBoxLayout(whole);
    rows->addWidget(tabs, 1);
    rows->addWidget(buildBottomLine());
    rows->setSizeConstraint(QLayout::SetMinimumSize);
    setCentralWidget(whole);
    beltpackPage_->setFocus();
}

void FrmMain::buildMenus() {
    QMenu* file = addMenu(menuBar(), "mnuFile", "&File");
    addItem(file, "mnuComPort", "&COM Port", [this] { startup_.mnuComPort_Click(); });
    addItem(file, "mnuRfModule", "&RF Module Type", [this] { rfModule_.mnuRfModule_Click(rfModulePicker_); });
    file->addSeparator()->setObjectName(QStringLiteral("mnuDash1"));
    // Unguarded: the end must not be refused, however deep handlers are nested in each other's waits.
    connect(addItem(file, "mnuExit", "&Exit"), &QAction::triggered, this, [] { endProgram(0); });

    QMenu* help = addMenu(menuBar(), "mnuHelp", "&Help");
    addItem(help, "mnuAbout", "&About", [this] { mnuAbout_Click(); });
}

QWidget* FrmMain::buildBottomLine() {
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(statusLine_, 1);
    row->addWidget(labelComPort_);
    return line;
}

void FrmMain::load() {
    guarded([this] { startup_.load(); });
}

void FrmMain::portLost() {
    labelComPort_->tell(
        fromLatin1(kNoComms), PortLabel::State::lost,
        QStringLiteral("The connection to the port was lost: check the cable, then choose the "
                       "port again in the menu."));
}

void FrmMain::showPortLabel(const std::string& text) {
    labelComPort_->tell(fromLatin1(text), port_.isOpen() ? PortLabel::State::open : PortLabel::State::notOpen,
                        portHover());
}

std::string FrmMain::portName() const {
    const int number = portChoice_.lastOpened();
    return number == 0 ? std::string() : "COM" + std::to_string(number);
}

QString FrmMain::portHover() const {
    if (portChoice_.lastOpened() == 0)
        return {};
    // The port that is really open: the label tells the stored number.
    const PortDevice device = findPortDevice(portChoice_.lastOpened());
    const QString hover =
        port_.isOpen()
            ? device.path
            : device.description(QStringLiteral("Not open: close any other program that uses it, then "
                                                "choose the port again in the menu."));
    const QString adapter = adapterOf(device.path);
    return adapter.isEmpty() ? hover : hover + QLatin1Char('\n') + adapter;
}

void FrmMain::showPortDialog() {
    ComSelect(portChoice_, this).exec();
}

std::unique_ptr<CalibDialog> FrmMain::createDialog(CalResult& result) {
    return std::make_unique<FormCalib>(link_, store_, result, this);
}

void FrmMain::mnuAbout_Click() {
    console_.messageBox(aboutText(kVersionMajor, kVersionMinor, kVersionRevision), Icon::information,
                        kAboutTitle);
}

void FrmMain::closeEvent(QCloseEvent* event) {
    event->accept();
    if (!port_.isOpen())
        return;  // the window unloads normally, and the program ends with it
    closePort();
    endProgram(0);
}

}  // namespace quorvex
