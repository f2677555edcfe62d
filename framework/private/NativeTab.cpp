#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"

#include <QPainter>
#include <QStyleOption>
#include <QTabBar>

namespace {

constexpr int kPageMargin = 4;

// A row of tabs over a framed area in which the program places its pages.
class NativeTab : public NativeOf<QWidget>, public NativeTabControl {
public:
    explicit NativeTab(QWidget* parent) : NativeOf<QWidget>(parent), bar(new QTabBar(this)) {
        bar->setDrawBase(false);
        connect(bar, &QTabBar::currentChanged, this, [this] {
            if (!quiet) {
                NMHDR header{this, id, TCN_SELCHANGE};
                NotifyParent(header);
            }
        });
    }

    bool BaseEvent(QEvent* event) override {
        if (event->type() == QEvent::Resize) {
            PlaceBar();
        } else if (event->type() == QEvent::Paint) {
            PaintFrame();
            return true;
        }
        return QWidget::event(event);
    }

    int InsertTab(int index, const QString& label) override {
        quiet = true;
        const int at = bar->insertTab(index, label);
        quiet = false;
        PlaceBar();
        return at;
    }
    bool DeleteTab(int index) override {
        const bool known = index >= 0 && index < bar->count();
        quiet = true;
        bar->removeTab(index);
        quiet = false;
        return known;
    }
    int TabCount() const override { return bar->count(); }
    int CurrentTab() const override { return bar->currentIndex(); }
    void SetCurrentTab(int index) override {
        quiet = true;
        bar->setCurrentIndex(index);
        quiet = false;
    }
    QString TabText(int index) const override { return bar->tabText(index); }
    CRect PageRect() const override {
        const int top = bar->sizeHint().height();
        return {kPageMargin, top + kPageMargin, width() - kPageMargin, height() - kPageMargin};
    }

private:
    void PlaceBar() { bar->setGeometry(0, 0, width(), bar->sizeHint().height()); }
    void PaintFrame() {
        QPainter painter(this);
        QStyleOptionTabWidgetFrame option;
        option.initFrom(this);
        option.lineWidth = 1;
        option.rect =
            QRect(0, bar->sizeHint().height() - 1, width(), height() - bar->sizeHint().height() + 1);
        option.tabBarSize = bar->sizeHint();
        QWidget::style()->drawPrimitive(QStyle::PE_FrameTabWidget, &option, &painter, this);
    }

    QTabBar* bar;
    bool quiet = false;
};

} // namespace

NativeWindow* MakeTab(DWORD /*style*/, QWidget* parent) {
    return new NativeTab(parent);
}
