#include "link/one_item_list_widget.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWheelEvent>

#include "link/latin1.h"

namespace quorvex {

namespace {
constexpr int kHeight = 34;  ///< room for both arrows of the scroll bar
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
        const QScopedValueRollback guard(positioning_, positioning_);
        setCurrentRow(index, QItemSelectionModel::NoUpdate);
        if (!positioning_)
            Q_EMIT scrolled();
    });
}

QSize OneItemListWidget::sizeHint() const {
    const int text = fontMetrics().horizontalAdvance(QLatin1String(kWidestItem));
    return {text + verticalScrollBar()->sizeHint().width() + 2 * frameWidth() + 12, kHeight};
}

void OneItemListWidget::refill(const std::vector<std::string>& items) {
    const QScopedValueRollback guard(positioning_, true);
    clear();
    for (const std::string& item : items)
        addItem(toQt(item));
    fitRows();
    setTopIndex(0);
}

int OneItemListWidget::topIndex() const {
    return verticalScrollBar()->value();
}

void OneItemListWidget::setTopIndex(int index) {
    const QScopedValueRollback guard(positioning_, true);
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(index);
}

void OneItemListWidget::fitRows() {
    const QSize row(viewport()->width(), viewport()->height());
    for (int i = 0; i < count(); ++i)
        item(i)->setSizeHint(row);
    executeDelayedItemsLayout();
}

void OneItemListWidget::resizeEvent(QResizeEvent* event) {
    const QScopedValueRollback guard(positioning_, true);
    const int index = topIndex();
    QListWidget::resizeEvent(event);
    fitRows();
    setTopIndex(index);
}

void OneItemListWidget::step(int by) {
    verticalScrollBar()->setValue(topIndex() + by);
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
            step(count());
            break;
        default:
            QListWidget::keyPressEvent(event);
    }
}

void OneItemListWidget::wheelEvent(QWheelEvent* event) {
    // One notch is one item, however many lines the system scrolls elsewhere.
    wheelRest_ += event->angleDelta().y();
    step(-wheelRest_ / QWheelEvent::DefaultDeltasPerStep);
    wheelRest_ %= QWheelEvent::DefaultDeltasPerStep;
    event->accept();
}

}  // namespace quorvex
