#include "host/stage/windows/browse/BrowserFrame.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

namespace stage {

namespace {

bool IsArrow(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down;
}

bool MovesTheList(int key) {
    return IsArrow(key) || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

bool IsTyping(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().front().isPrint() && event.text().front() != ' ' &&
           (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
}

} // namespace

BrowserFrame::BrowserFrame(const QString& key, QWidget* parent)
    : QDialog(parent), settingsKey("browse/" + key), splitter(new QSplitter(Qt::Horizontal, this)) {
}

void BrowserFrame::Fill(QWidget* listSide, QWidget* pictureSide, QSize size, int listWidth) {
    splitter->addWidget(listSide);
    splitter->addWidget(pictureSide);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({listWidth, size.width() - listWidth});
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addWidget(buttons);
    resize(size);
}

void BrowserFrame::RestorePlaces() {
    const QSettings settings;
    restoreGeometry(settings.value(settingsKey + "/geometry").toByteArray());
    splitter->restoreState(settings.value(settingsKey + "/split").toByteArray());
}

void BrowserFrame::done(int result) {
    QSettings settings;
    settings.setValue(settingsKey + "/geometry", saveGeometry());
    settings.setValue(settingsKey + "/split", splitter->saveState());
    QDialog::done(result);
}

void BrowserFrame::ConnectKeys(QLineEdit* field, QAbstractItemView* view) {
    searched = field;
    moved = view;
    field->installEventFilter(this);
    view->installEventFilter(this);
}

bool BrowserFrame::ForwardKey(const QObject* watched, QKeyEvent* event) {
    if (IsArrow(event->key()) && Step(event->key() == Qt::Key_Down)) {
        return true;
    }
    if (watched == searched && MovesTheList(event->key())) {
        QCoreApplication::sendEvent(moved, event);
        return true;
    }
    if (watched == moved && IsTyping(*event)) {
        searched->setFocus();
        QCoreApplication::sendEvent(searched, event);
        return true;
    }
    return false;
}

bool BrowserFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && ForwardKey(watched, static_cast<QKeyEvent*>(event))) {
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace stage
