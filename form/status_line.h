#pragma once

#include <QLabel>

#include "form/mark.h"

namespace quorvex {

/// The status line at the bottom of the window, `LblStatus`: a mark, the text, and a thin strip along the
/// lower edge while an operation tells how far it is. The colours of the texts are fixed, so their ground is
/// light under every palette, and they are large and bold enough to be read on it.
class StatusLine : public QLabel {
public:
    explicit StatusLine(QWidget* parent = nullptr);

    void tell(const QString& text, Colour colour);
    /// `done` of `total` steps; a total of 0 takes the strip down.
    void showProgress(int done, int total);

    Mark mark() const { return mark_; }
    /// The share of the line that the strip covers, 0 to 1.
    double progress() const { return progress_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    bool isDark() const;
    void takeColours();
    /// Sets a text smaller that is too long for the line.
    void fit();
    QRect ground() const;

    QFont face_;
    Colour colour_ = kBlack;
    Mark mark_ = Mark::none;
    double progress_ = 0;
};

}  // namespace quorvex
