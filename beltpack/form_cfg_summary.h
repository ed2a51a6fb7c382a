#pragma once

#include <QDialog>
#include <string>

namespace quorvex {

/// The dialog "Registration Configuration Summary": shows a text in a fixed-pitch face, all of it at once.
class FormCfgSummary : public QDialog {
public:
    FormCfgSummary(const std::string& SummaryText, QWidget* parent);
};

}  // namespace quorvex
