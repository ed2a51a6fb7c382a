#pragma once

#include <QWidget>

#include "beltpack/settings_file.h"

namespace quorvex {

/// The toolkit's file dialog, `CommonDialog1`. It starts in the folder last used.
class QtFileDialog : public FileDialog {
public:
    explicit QtFileDialog(QWidget* parent) : parent_(parent) {}

    Choice chooseForSaving(const Settings& settings) override { return choose(settings, Purpose::saving); }
    Choice chooseForLoading(const Settings& settings) override { return choose(settings, Purpose::loading); }

private:
    enum class Purpose { saving, loading };
    Choice choose(const Settings& settings, Purpose purpose);

    QWidget* parent_;
    QString folder_;
};

}  // namespace quorvex
