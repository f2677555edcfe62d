#pragma once

#include <QDialog>

class QAbstractItemView;
class QKeyEvent;
class QLineEdit;
class QPushButton;
class QSplitter;

namespace stage {

/// What browsers have in common: a searched list on the left, a picture on the right, OK and Cancel below.
/// Typing goes to the search field and the arrows to the list wherever the focus is. Size and parts are
/// remembered under a key of the settings.
class BrowserFrame : public QDialog {
    Q_OBJECT
public:
    void done(int result) override;

protected:
    BrowserFrame(const QString& key, QWidget* parent);

    /// Once. The size and the list's width are those before the user has changed them; pixels.
    void Fill(QWidget* listSide, QWidget* pictureSide, QSize size, int listWidth);
    void RestorePlaces();
    /// Which field and list the keys go to.
    void ConnectKeys(QLineEdit* field, QAbstractItemView* view);
    /// An arrow was pressed; true if the browser moves the list itself.
    virtual bool Step(bool /*down*/) { return false; }
    bool eventFilter(QObject* watched, QEvent* event) override;

    QPushButton* ok = nullptr;

private:
    bool ForwardKey(const QObject* watched, QKeyEvent* event);

    QString settingsKey;
    QSplitter* splitter;
    QLineEdit* searched = nullptr;
    QAbstractItemView* moved = nullptr;
};

} // namespace stage
