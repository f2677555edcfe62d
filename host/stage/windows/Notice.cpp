#include "host/stage/windows/Notice.h"

#include <algorithm>
#include <QHBoxLayout>
#include <QLabel>
#include <QStatusBar>
#include <QStyle>
#include <QToolButton>
#include <utility>

namespace stage {

namespace {
constexpr int kWidth = 520; ///< pixels at most: room for other messages stays
} // namespace

Notice::Notice(QStatusBar& bar) : QWidget(&bar), label(new QLabel(this)), action(new QToolButton(this)) {
    setObjectName("Notice");
    setMaximumWidth(kWidth);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("role", "mode");
    action->setObjectName("NoticeAction");
    auto* close = new QToolButton(this);
    close->setObjectName("NoticeClose");
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setToolTip(tr("Close"));
    close->setAutoRaise(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    // The status bar takes the height of its highest part, also of one that is hidden.
    const int height = label->sizeHint().height();
    setFixedHeight(height);
    action->setFixedHeight(height);
    close->setFixedSize(height, height);
    layout->addWidget(label, 1);
    layout->addWidget(action);
    layout->addWidget(close);
    connect(action, &QToolButton::clicked, this, [this] {
        const std::function<void()> run = std::exchange(onAction, nullptr);
        Withdraw();
        if (run) {
            run();
        }
    });
    connect(close, &QToolButton::clicked, this, &Notice::Withdraw);
    shown.setSingleShot(true);
    shown.setInterval(kShownMs);
    connect(&shown, &QTimer::timeout, this, &Notice::Withdraw);
    bar.addPermanentWidget(this);
    hide();
}

void Notice::Show(const QString& text, const QString& button, std::function<void()> run) {
    full = text;
    onAction = std::move(run);
    action->setText(button);
    setToolTip(text);
    label->setMinimumWidth(std::min(label->fontMetrics().horizontalAdvance(full) + 8, kWidth / 2));
    Elide();
    show();
    shown.start();
}

void Notice::Withdraw() {
    shown.stop();
    onAction = nullptr;
    full.clear();
    hide();
}

void Notice::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Elide();
}

void Notice::Elide() {
    const int room = kWidth - action->sizeHint().width() - 60;
    label->setText(label->fontMetrics().elidedText(full, Qt::ElideRight, room));
}

} // namespace stage
