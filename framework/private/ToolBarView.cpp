#include "framework/private/ToolBarView.h"

#include "framework/private/Surface.h"

#include <QAction>
#include <QHelpEvent>
#include <QIcon>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr const char* kIdProperty = "filmsCommand";

} // namespace

ToolBarView::ToolBarView(CToolBar& data, QToolBar& bar, CommandSink sink)
    : QObject(&bar), source(&data), native(bar), onCommand(std::move(sink)) {
    data.views.push_back(this);
    Rebuild();
}

ToolBarView::~ToolBarView() {
    if (source) {
        std::erase(source->views, this);
    }
}

void ToolBarView::Rebuild() {
    if (!source) {
        return;
    }
    native.clear();
    actions.clear();
    native.setIconSize(QSize(source->GetImageSize().cx, source->GetImageSize().cy));
    for (const ToolBarButton& button : source->Buttons()) {
        if (button.style & TBBS_SEPARATOR) {
            actions.push_back(native.addSeparator());
            continue;
        }
        const QString tip = QString::fromStdString(source->TipText(button.id));
        QAction* action = native.addAction(ToolBarIcon(*source, button.image), tip);
        action->setToolTip(tip);
        if (QWidget* widget = native.widgetForAction(action)) {
            widget->installEventFilter(this);
            widget->setProperty(kIdProperty, button.id);
        }
        connect(action, &QAction::triggered, this, [this, id = button.id] {
            if (!source) {
                return;
            }
            // The toolkit toggled the button; only the program's own states show.
            Refresh();
            if (onCommand) {
                onCommand(id);
            } else {
                source->Press(id);
            }
        });
        actions.push_back(action);
    }
    Refresh();
}

bool ToolBarView::eventFilter(QObject* watched, QEvent* event) {
    CWnd* owner = source && !onCommand ? source->GetParent() : nullptr;
    if (event->type() != QEvent::ToolTip || !owner) {
        return false;
    }
    TOOLTIPTEXT request;
    request.hdr = {source->GetSafeHwnd(), watched->property(kIdProperty).toUInt(), TTN_NEEDTEXT};
    owner->SendMessage(WM_NOTIFY, request.hdr.idFrom, reinterpret_cast<LPARAM>(&request));
    const QString text = QString::fromUtf8(request.lpszText ? request.lpszText : request.szText);
    if (text.isEmpty()) {
        return false;
    }
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text);
    return true;
}

void ToolBarView::Refresh() {
    if (!source) {
        return;
    }
    native.setWindowTitle(QString::fromStdString(source->Title()));
    const std::size_t count = std::min(actions.size(), source->Buttons().size());
    for (std::size_t i = 0; i < count; ++i) {
        const ToolBarButton& button = source->Buttons()[i];
        if (button.style & TBBS_SEPARATOR) {
            continue;
        }
        const bool down = (button.state & (TBSTATE_PRESSED | TBSTATE_CHECKED)) != 0;
        actions[i]->setCheckable(down);
        actions[i]->setChecked(down);
        actions[i]->setEnabled((button.state & TBSTATE_ENABLED) && !(button.state & TBSTATE_INDETERMINATE));
        actions[i]->setVisible(!(button.state & TBSTATE_HIDDEN));
    }
}

namespace {

// One picture of a strip; grey of the classic face colour counts as transparent where the bitmap has no
// alpha.
QPixmap StripImage(const CBitmap& strip, CSize size, int index) {
    const QImage all = surface::ImageOf(strip);
    QImage one = all.copy(index * size.cx, 0, size.cx, size.cy).convertToFormat(QImage::Format_ARGB32);
    if (strip.Data() && !strip.Data()->hasAlpha) {
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                if ((one.pixel(x, y) & 0xFFFFFF) == 0xC0C0C0) {
                    one.setPixel(x, y, 0);
                }
            }
        }
    }
    return QPixmap::fromImage(one);
}

} // namespace

QIcon ToolBarIcon(const CToolBar& toolbar, int image) {
    QIcon icon;
    const CSize size = toolbar.GetImageSize();
    if (image < 0 || surface::ImageOf(toolbar.Bitmap()).isNull()) {
        return icon;
    }
    icon.addPixmap(StripImage(toolbar.Bitmap(), size, image));
    if (!surface::ImageOf(toolbar.LargeBitmap()).isNull()) {
        QPixmap large = StripImage(toolbar.LargeBitmap(), {size.cx * 2, size.cy * 2}, image);
        large.setDevicePixelRatio(2);
        icon.addPixmap(large);
    }
    return icon;
}

QToolBar* CreateNativeToolBar(CToolBar& toolbar, QWidget* parent, CommandSink onCommand) {
    auto* native = new QToolBar(parent);
    new ToolBarView(toolbar, *native, std::move(onCommand));
    return native;
}
