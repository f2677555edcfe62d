#include "bench/EngineBenches.h"
#include "bench/RowWindows.h"
#include "framework/Constants.h"
#include "framework/PaintDC.h"
#include "framework/QtBridge.h"

#include <benchmark/benchmark.h>
#include <QCoreApplication>
#include <QPainter>
#include <QWidget>

namespace films_bench {

namespace {

constexpr int kKeys = 200;
constexpr int kRowWidth = 1100;
constexpr int kRowHeight = 20;
constexpr COLORREF kRowColor = 0xC8C8C8;
constexpr COLORREF kKeyColor = 0x4080C0;

int KeyLeft(int key) {
    return 4 + key * (kRowWidth - 12) / kKeys;
}
/// Every other key lasts some time and is a box, the rest are bars with a square on them.
bool IsTimed(int key) {
    return key % 2 != 0;
}

/// A row that draws its keys through the framework.
class KeyRow : public CWnd {
protected:
    void OnPaint() {
        CPaintDC dc(this);
        dc.FillSolidRect(dc.ps.rcPaint, kRowColor);
        CPen none(PS_NULL, 0, 0);
        CPen thin(PS_SOLID, 1, 0);
        CPen wide(PS_SOLID, 2, 0);
        CBrush body(kKeyColor);
        CBrush white(0xFFFFFF);
        for (int key = 0; key < kKeys; ++key) {
            const int x = KeyLeft(key);
            dc.SelectObject(&body);
            if (IsTimed(key)) {
                dc.SelectObject(&wide);
                dc.Rectangle(x, 2, x + 5, 18);
                continue;
            }
            dc.SelectObject(&none);
            dc.Rectangle(x, 2, x + 6, 17);
            dc.SelectObject(&white);
            dc.SelectObject(&thin);
            dc.Rectangle(x, 7, x + 6, 13);
        }
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(KeyRow, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

/// The same picture drawn by the toolkit alone. Its outlined rects reach one pixel further right and down.
class NaiveRow : public QWidget {
public:
    explicit NaiveRow(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(0xC8, 0xC8, 0xC8));
        for (int key = 0; key < kKeys; ++key) {
            const int x = KeyLeft(key);
            painter.setBrush(QColor(0xC0, 0x80, 0x40));
            if (IsTimed(key)) {
                painter.setPen(QPen(Qt::black, 2));
                painter.drawRect(x, 2, 4, 15);
                continue;
            }
            painter.setPen(Qt::NoPen);
            painter.drawRect(x, 2, 6, 15);
            painter.setBrush(Qt::white);
            painter.setPen(QPen(Qt::black, 1));
            painter.drawRect(x, 7, 5, 5);
        }
    }
};

/// A row of keys side by side that carry their names, or what of them fits.
class LabelRow : public CWnd {
public:
    int boxWidth = 0;

protected:
    void OnPaint() {
        constexpr UINT kLabelFormat = DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_PATH_ELLIPSIS;
        CPaintDC dc(this);
        dc.FillSolidRect(dc.ps.rcPaint, kRowColor);
        dc.SetBkMode(TRANSPARENT);
        for (int key = 0, x = 0; key < kKeys && x < kRowWidth; ++key, x += boxWidth) {
            dc.DrawText("Animation " + std::to_string(key), CRect(x, 2, x + boxWidth, 18), kLabelFormat);
        }
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(LabelRow, CWnd)
ON_WM_PAINT()
END_MESSAGE_MAP()

/// Paints all children of the window, as after a change of the range.
void PaintChildren(QWidget& window) {
    for (QObject* child : window.children()) {
        static_cast<QWidget*>(child)->update();
    }
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &request);
}

void Paint(benchmark::State& state, QWidget& window) {
    PaintChildren(window);
    for (auto _ : state) {
        PaintChildren(window);
    }
}

void PaintFrame(benchmark::State& state) {
    RowWindows<KeyRow> rows(40, kRowWidth, kRowHeight);
    Paint(state, *NativeWidget(rows.top));
}

void PaintFrameNaive(benchmark::State& state) {
    QWidget window;
    window.setFixedSize(kRowWidth, 40 * kRowHeight);
    for (int i = 0; i < 40; ++i) {
        (new NaiveRow(&window))->setGeometry(0, i * kRowHeight, kRowWidth, kRowHeight);
    }
    ShowForPainting(window);
    Paint(state, window);
}

void PaintLabels(benchmark::State& state, int boxWidth) {
    RowWindows<LabelRow> rows(40, kRowWidth, kRowHeight);
    for (auto& row : rows.all) {
        row->boxWidth = boxWidth;
    }
    Paint(state, *NativeWidget(rows.top));
}

/// Every paint finds other boxes, as while zooming.
void PaintLabelsZooming(benchmark::State& state) {
    RowWindows<LabelRow> rows(40, kRowWidth, kRowHeight);
    int width = 0;
    for (auto _ : state) {
        width = width % 100 + 1;
        for (auto& row : rows.all) {
            row->boxWidth = width;
        }
        PaintChildren(*NativeWidget(rows.top));
    }
}

} // namespace

void RegisterTimelineDrawBenches() {
    constexpr auto kUs = benchmark::kMicrosecond;
    benchmark::RegisterBenchmark("PaintKeys/8000", PaintFrame)->Unit(kUs);
    benchmark::RegisterBenchmark("PaintKeys/8000_naive", PaintFrameNaive)->Unit(kUs);
    // 40 rows of 10, 27 and 200 labels.
    benchmark::RegisterBenchmark("PaintLabels/whole", PaintLabels, 110)->Unit(kUs);
    benchmark::RegisterBenchmark("PaintLabels/shortened", PaintLabels, 40)->Unit(kUs);
    benchmark::RegisterBenchmark("PaintLabels/too_narrow", PaintLabels, 5)->Unit(kUs);
    benchmark::RegisterBenchmark("PaintLabels/zooming", PaintLabelsZooming)->Unit(kUs);
}

} // namespace films_bench
