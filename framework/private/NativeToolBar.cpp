#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"

#include <QToolBar>

namespace {

class NativeToolBar : public NativeOf<QToolBar> {
public:
    explicit NativeToolBar(QWidget* parent) : NativeOf<QToolBar>(parent) {
        setMovable(false);
        setFocusPolicy(Qt::NoFocus);
    }
};

} // namespace

NativeWindow* MakeToolBar(DWORD /*style*/, QWidget* parent) {
    return new NativeToolBar(parent);
}
