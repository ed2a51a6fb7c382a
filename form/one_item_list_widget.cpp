#include "form/one_item_list_widget.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>
#include <cstdlib>

#include "form/lengths.h"
#include "link/qt_text.h"

namespace quorvex {

namespace {
constexpr int kHeight = 510;   ///< twips: room for both arrows of the scroll bar
constexpr int kMargins = 180;  ///< twips
constexpr char kWidestItem[] = "STANDARD - EUROPE";
}  // namespace

OneItemListWidget::OneItemListWidget(QWidget* parent) : QListWidget(parent) {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setSelectionMode(QAbstractItemView::NoSelection);
    setUniformItemSizes(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int index) {
        setCurrentRow(index, QItemSelectionModel::NoUpdate);
        if (!positioning_)
            Q_EMIT scrolled();
    });
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this](int action) {
        const bool isDown =
            action == QScrollBar::SliderSingleStepAdd || action == QScrollBar::SliderPageStepAdd;
        if (isDown && verticalScrollBar()->value() == count() - 1)
            stepPastEnd();
    });
}

QSize OneItemListWidget::sizeHint() const {
    const int text = fontMetrics().horizontalAdvance(QLatin1String(kWidestItem));
    return {text + verticalScrollBar()->sizeHint().width() + 2 * frameWidth() + pixels(kMargins),
            pixels(kHeight)};
}

void OneItemListWidget::refill(const std::vector<std::string>& items) {
    const QScopedValueRollback guard(positioning_, true);
    clear();
    for (const std::string& item : items)
        addItem(fromLatin1(item));
    fitRows();
    setTopIndex(0);
}

int OneItemListWidget::topIndex() const {
    return isPastEnd_ ? count() : verticalScrollBar()->value();
}

void OneItemListWidget::setTopIndex(int index) {
    const QScopedValueRollback guard(positioning_, true);
    isPastEnd_ = false;
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(index);
    setCurrentRow(verticalScrollBar()->value(), QItemSelectionModel::NoUpdate);
}

void OneItemListWidget::fitRows() {
    const QSize row(viewport()->width(), viewport()->height());
    for (int i = 0; i < count(); ++i)
        item(i)->setSizeHint(row);
}

void OneItemListWidget::resizeEvent(QResizeEvent* event) {
    const QScopedValueRollback guard(positioning_, true);
    const int index = topIndex();
    QListWidget::resizeEvent(event);
    fitRows();
    setTopIndex(index);
}

void OneItemListWidget::step(int by) {
    const int index = topIndex() + by;
    if (index < count() || count() == 0) {
        verticalScrollBar()->setValue(index);
        return;
    }
    stepPastEnd();
}

void OneItemListWidget::stepPastEnd() {
    isPastEnd_ = true;
    Q_EMIT scrolled();
    isPastEnd_ = false;
}

void OneItemListWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_PageUp:
            step(-1);
            break;
        case Qt::Key_Down:
        case Qt::Key_PageDown:
            step(1);
            break;
        case Qt::Key_Home:
            step(-topIndex());
            break;
        case Qt::Key_End:
            step(count() - 1 - topIndex());
            break;
        default:
            QListWidget::keyPressEvent(event);
    }
}

void OneItemListWidget::wheelEvent(QWheelEvent* event) {
    // One notch is one item, however many lines the system scrolls elsewhere.
    constexpr int kNotch = QWheelEvent::DefaultDeltasPerStep;
    for (wheelRest_ += event->angleDelta().y(); std::abs(wheelRest_) >= kNotch;) {
        const int up = wheelRest_ > 0 ? 1 : -1;
        wheelRest_ -= up * kNotch;
        step(-up);
    }
    event->accept();
}

}  // namespace quorvex
