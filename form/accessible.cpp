#include "form/accessible.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace quorvex {

namespace {

constexpr char kRole[] = "accessibleRole";

class ToldWidget : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? widget()->accessibleName() : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const QVariant role = widget ? widget->property(kRole) : QVariant();
    return role.isValid() ? new ToldWidget(widget, static_cast<QAccessible::Role>(role.toInt())) : nullptr;
}

}  // namespace

void setAccessibleRole(QWidget* widget, QAccessible::Role role) {
    widget->setProperty(kRole, static_cast<int>(role));
    QAccessible::installFactory(makeInterface);  // once only, however often it is asked for
}

}  // namespace quorvex
