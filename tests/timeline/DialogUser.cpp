#include "tests/timeline/DialogUser.h"

#include "framework/QtBridge.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <vector>

namespace {

QWindow* WindowOf(const CWnd& window) {
    return NativeWidget(window)->window()->windowHandle();
}

/// Where the client coordinates of a window count from.
QWidget* ClientOf(const CWnd& window) {
    QWidget* widget = NativeWidget(window);
    auto* scrolling = qobject_cast<QAbstractScrollArea*>(widget);
    return scrolling != nullptr ? scrolling->viewport() : widget;
}

} // namespace

int DialogUser::Run(const std::function<void()>& user) {
    QTimer::singleShot(0, [this, &user] {
        ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dialog)));
        Settle();
        user();
        if (dialog.GetSafeHwnd() != nullptr && dialog.IsWindowVisible()) {
            ADD_FAILURE() << "the dialog is still open";
            dialog.EndDialog(-2);
        }
    });
    return dialog.DoModal();
}

/// A new layout asks for a new place, which asks for a new picture.
void DialogUser::Settle() {
    constexpr int kRounds = 4;
    for (int round = 0; round < kRounds; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

void DialogUser::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(WindowOf(dialog), key, modifiers);
    Settle();
}

void DialogUser::Type(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), text);
    Settle();
}

QPoint DialogUser::InDialog(const CWnd& window, CPoint point) const {
    return ClientOf(window)->mapTo(NativeWidget(dialog), QPoint(point.x, point.y));
}

void DialogUser::Click(int id) {
    const CWnd& control = *dialog.GetDlgItem(id);
    const QPoint middle = NativeWidget(control)->rect().center();
    ClickAt(control, CPoint(middle.x(), middle.y()));
}

void DialogUser::ClickAt(const CWnd& window, CPoint point, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(WindowOf(dialog), Qt::LeftButton, modifiers, InDialog(window, point));
    Settle();
}

void DialogUser::DoubleClickAt(const CWnd& window, CPoint point) {
    QTest::mouseDClick(WindowOf(dialog), Qt::LeftButton, Qt::NoModifier, InDialog(window, point));
    Settle();
}

void DialogUser::Wheel(const CWnd& window, CPoint point, int delta) {
    const QPointF place = InDialog(window, point);
    QWheelEvent wheel(place, NativeWidget(dialog)->mapToGlobal(place), QPoint(), QPoint(0, delta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // as the user's
    qApp->notify(WindowOf(dialog), &wheel);
    Settle();
}

void DialogUser::ExpectTidy(std::size_t controls) {
    const QWidget* window = NativeWidget(dialog);
    std::vector<const QWidget*> found;
    for (const QWidget* child : window->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        found.push_back(child);
        const auto* label = qobject_cast<const QLabel*>(child);
        const auto* button = qobject_cast<const QAbstractButton*>(child);
        const QString text = label != nullptr    ? label->text()
                             : button != nullptr ? button->text()
                                                 : QString();
        EXPECT_LE(child->fontMetrics().horizontalAdvance(text), child->width()) << text.toStdString();
        EXPECT_TRUE(window->rect().contains(child->geometry())) << text.toStdString();
    }
    EXPECT_EQ(found.size(), controls);
    for (std::size_t a = 0; a < found.size(); ++a) {
        for (std::size_t b = a + 1; b < found.size(); ++b) {
            EXPECT_FALSE(found[a]->geometry().intersects(found[b]->geometry())) << a << " " << b;
        }
    }
}
