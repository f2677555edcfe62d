#include "host/stage/windows/PickModeSign.h"

#include "host/stage/windows/ViewArea.h"

#include <QLabel>
#include <QStatusBar>

namespace stage {

namespace {

QLabel* AddLabel(QStatusBar& bar, const char* name) {
    auto* label = new QLabel(&bar);
    label->setObjectName(name);
    label->setProperty("role", "mode");
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long text widens no window
    bar.addWidget(label, 1);
    label->hide();
    return label;
}

} // namespace

PickModeSign::PickModeSign(QStatusBar& statusBar, ViewArea& viewArea)
    : bar(statusBar), views(viewArea), label(AddLabel(statusBar, "PickMode")),
      own(AddLabel(statusBar, "OwnMode")) {
    SetPickModeHost(this);
    // The bar hides its labels behind a line, and shows again only those that nobody has hidden.
    QObject::connect(&bar, &QStatusBar::messageChanged, own, [this] { ShowOwn(); });
}

PickModeSign::~PickModeSign() {
    SetPickModeHost(nullptr);
    delete own;
}

void PickModeSign::ShowPickMode(const PickMode* mode) {
    isPicking = mode != nullptr;
    ShowOwn();
    if (mode == nullptr) {
        label->hide();
        views.unsetCursor();
        return;
    }
    label->setText(QString::fromStdString(mode->Text()));
    label->setToolTip(label->text());
    bar.clearMessage(); // it would cover this
    label->show();
    views.setCursor(mode->ChosenBy() == PickMode::By::Click ? Qt::CrossCursor : Qt::PointingHandCursor);
}

void PickModeSign::ShowViewMode(const QString& text, bool isDrag) {
    viewMode = text;
    Show(isDrag);
}

void PickModeSign::ShowListMode(const QString& text) {
    listMode = text;
    Show(!text.isEmpty());
}

void PickModeSign::Show(bool atOnce) {
    if (atOnce && !isPicking) {
        bar.clearMessage();
    }
    ShowOwn();
}

void PickModeSign::ShowOwn() {
    const QString& text = listMode.isEmpty() ? viewMode : listMode;
    own->setText(text);
    own->setToolTip(text);
    own->setVisible(!text.isEmpty() && !isPicking && bar.currentMessage().isEmpty());
}

bool PickModeSign::NeedsEscape() const {
    return views.IsDragging();
}

} // namespace stage
