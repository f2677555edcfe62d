#pragma once

#include <functional>
#include <QTimer>
#include <QWidget>

class QLabel;
class QStatusBar;
class QToolButton;

namespace stage {

/// A word in the status bar with something to do about it, which no other message covers. It asks nothing: it
/// goes by itself after a while, by its cross, and when another one comes.
class Notice : public QWidget {
    Q_OBJECT
public:
    static constexpr int kShownMs = 30000; ///< time to read it and to think about it

    explicit Notice(QStatusBar& bar);
    /// The button does it and takes the notice away.
    void Show(const QString& text, const QString& button, std::function<void()> run);
    void Withdraw();
    const QString& Text() const { return full; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Elide();

    QLabel* label;
    QToolButton* action;
    QString full;
    std::function<void()> onAction;
    QTimer shown;
};

} // namespace stage
