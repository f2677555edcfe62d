#include "framework/private/NativeFactory.h"

#include "framework/private/NativeOf.h"

namespace {

// A window of the program's own: it paints all of itself.
class PlainWindow : public NativeOf<QWidget> {
public:
    PlainWindow(QWidget* parent, Qt::WindowFlags flags) : NativeOf<QWidget>(parent, flags) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
        setMouseTracking(true);
        setFocusPolicy(Qt::NoFocus);
    }

    bool IsControl() const override { return false; }
};

} // namespace

NativeWindow* MakeNative(const std::string& className, DWORD style, QWidget* parent, Qt::WindowFlags flags) {
    (void)className;
    (void)style;
    return new PlainWindow(parent, flags);
}

CWnd* MakeControlObject(const std::string& /*className*/, DWORD /*style*/) {
    return new CWnd;
}
