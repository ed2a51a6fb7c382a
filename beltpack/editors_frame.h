#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>

#include "beltpack/production_values.h"
#include "beltpack/settings_editors.h"
#include "form/one_item_list_widget.h"
#include "form/qt_controls.h"

namespace quorvex {

/// The controls that edit the settings image: microphone type, battery alarm, hardware revision and the
/// production values. The list of regulations and its label belong to it too, and are placed elsewhere.
class EditorsFrame : public QWidget {
public:
    EditorsFrame(SettingsImage& image, QWidget* parent = nullptr);

    SettingsEditors& editors() { return editors_; }
    void connectTo(ProductionValues& production);
    QWidget* regulations() { return regulations_; }
    QWidget* regulationsLabel() { return regulationsLabel_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    OneItemListWidget* list(const char* name, const char* said, void (SettingsEditors::*scrolled)());
    void layOut();

    QRadioButton *optionMICBal_, *optionMICUnBal_, *optionMICElectret_;
    QCheckBox* checkBattAlarm_;
    OneItemListWidget *hwRevision_, *regulations_;
    QLabel* regulationsLabel_;
    QPushButton* setProdSettings_;
    QLabel* defaults_;  ///< the heading of what is below it
    RadioGroup mic_;
    CheckBoxField batteryAlarm_;
    SettingsEditors editors_;
};

}  // namespace quorvex
