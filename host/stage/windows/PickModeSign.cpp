#include "host/stage/windows/PickModeSign.h"

#include "host/stage/windows/ViewArea.h"

#include <QLabel>
#include <QStatusBar>

namespace stage {

PickModeSign::PickModeSign(QStatusBar& statusBar, ViewArea& viewArea)
    : bar(statusBar), views(viewArea), label(new QLabel(&statusBar)) {
    label->setObjectName("PickMode");
    label->setProperty("role", "mode");
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long text widens no window
    bar.addWidget(label, 1);
    label->hide();
    SetPickModeHost(this);
}

PickModeSign::~PickModeSign() {
    SetPickModeHost(nullptr);
}

void PickModeSign::ShowPickMode(const PickMode* mode) {
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

bool PickModeSign::NeedsEscape() const {
    return views.IsDragging();
}

} // namespace stage
