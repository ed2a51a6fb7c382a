#include "tests/support/operator.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QTest>
#include <QTimer>
#include <utility>

#include "tests/support/hand.h"

namespace quorvex {

namespace {

QString iconName(QMessageBox::Icon icon) {
    switch (icon) {
        case QMessageBox::NoIcon:
            return QStringLiteral("no icon");
        case QMessageBox::Information:
            return QStringLiteral("information");
        case QMessageBox::Warning:
            return QStringLiteral("warning");
        case QMessageBox::Critical:
            return QStringLiteral("critical");
        case QMessageBox::Question:
            break;
    }
    return QStringLiteral("question");
}

QString buttonNames(const QMessageBox& box) {
    QStringList names;
    for (const QAbstractButton* button : box.buttons())
        names << button->text().remove(QLatin1Char('&'));
    names.sort();
    return names.join(QStringLiteral(", "));
}

QString entry(const QString& icon, const QString& title, const QString& buttons, const QString& text) {
    return QStringLiteral("box %1 \"%2\" [%3]: %4").arg(icon, title, buttons, text);
}

}  // namespace

QString boxEntry(const QString& icon, const QString& title, const QString& text) {
    return entry(icon, title, QStringLiteral("OK"), text);
}

QString failureEntry(const QString& text) {
    return boxEntry(QStringLiteral("critical"), QStringLiteral("Quorvex Config"), text);
}

QString dialogEntry(const QString& name, const QString& caption) {
    return QStringLiteral("dialog %1 \"%2\"").arg(name, caption);
}

Operator::Operator(Journal& journal) : journal_(journal) {
    qApp->installEventFilter(this);
}

Operator::~Operator() {
    qApp->removeEventFilter(this);
}

bool Operator::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Show && !rests_) {
        if (auto* dialog = qobject_cast<QDialog*>(object))
            QTimer::singleShot(0, dialog, [this, dialog] { handle(*dialog); });
    }
    return false;
}

void Operator::handle(QDialog& dialog) {
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        handleBox(*box);
        return;
    }
    const QString modality = dialog.isModal() ? QString() : QStringLiteral(", not modal");
    journal_.note(dialogEntry(dialog.objectName(), dialog.windowTitle()) + modality);
    if (!QTest::qWaitForWindowActive(&dialog))  // keys typed before that are lost
        journal_.note("never active: " + dialog.objectName());
    if (!plans_.empty()) {
        const auto handling = std::move(plans_.front());
        plans_.pop_front();
        handling(dialog);
        if (!dialog.isVisible())
            return;
    }
    journal_.note("sent away: " + dialog.objectName());
    dialog.reject();
}

void Operator::handleBox(QMessageBox& box) {
    const QString modality = box.isModal() ? QString() : QStringLiteral(", not modal");
    journal_.note(entry(iconName(box.icon()), box.windowTitle(), buttonNames(box), box.text()) + modality);
    if (look_)
        look_(box);
    if (!box.isVisible())
        return;
    if (QAbstractButton* ok = box.button(QMessageBox::Ok))
        hand::click(*ok);
    if (box.isVisible()) {
        journal_.note("sent away: a box");
        box.reject();
    }
}

}  // namespace quorvex
