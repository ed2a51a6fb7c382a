#pragma once

#include <QListWidget>

#include "link/controls.h"

namespace quorvex {

/// A list that shows exactly one item and is stepped by its scroll bar, the wheel or the arrow keys.
class OneItemListWidget : public QListWidget, public OneItemList {
    Q_OBJECT
public:
    explicit OneItemListWidget(QWidget* parent = nullptr);

    void refill(const std::vector<std::string>& items) override;
    int topIndex() const override;
    void setTopIndex(int index) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// A person has scrolled to another item, or has stepped past the last one: then the top index is the
    /// number of items while this is emitted, and the last item stays unless a slot goes to another one. Not
    /// emitted by refill or setTopIndex.
    void scrolled();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitRows();
    void step(int by);
    void stepPastEnd();

    bool isPastEnd_ = false;
    bool positioning_ = false;
    int wheelRest_ = 0;  ///< turn of the wheel not yet worth a step, in eighths of a degree
};

}  // namespace quorvex
