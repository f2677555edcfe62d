#include "framework/private/NativeControls.h"
#include "framework/private/NativeOf.h"
#include "framework/private/TextLayout.h"

#include <QLabel>

namespace {

class NativeStatic : public NativeOf<QLabel> {
public:
    NativeStatic(DWORD staticStyle, QWidget* parent, Qt::WindowFlags flags)
        : NativeOf<QLabel>(parent, flags) {
        windowStyle = staticStyle;
        setTextFormat(Qt::PlainText);
        const DWORD type = staticStyle & SS_TYPEMASK;
        const Qt::Alignment vertical = staticStyle & SS_CENTERIMAGE ? Qt::AlignVCenter : Qt::AlignTop;
        setAlignment(vertical | (type == SS_CENTER  ? Qt::AlignHCenter
                                 : type == SS_RIGHT ? Qt::AlignRight
                                                    : Qt::AlignLeft));
        if (type == SS_ETCHEDHORZ || type == SS_ETCHEDVERT || type == SS_ETCHEDFRAME) {
            setFrameShape(type == SS_ETCHEDHORZ   ? QFrame::HLine
                          : type == SS_ETCHEDVERT ? QFrame::VLine
                                                  : QFrame::StyledPanel);
            setFrameShadow(QFrame::Sunken);
        }
    }

    // A template's line of text is a little lower than the font.
    CRect Fit(const CRect& rect) override {
        CRect fitted = rect;
        if (rect.Height() > 0 && !isWindow()) {
            fitted.bottom =
                std::max(rect.bottom, rect.top + std::min(fontMetrics().height(), rect.Height() + 3));
        }
        return fitted;
    }

    void SetText(const QString& newText) override {
        raw = newText;
        setText(windowStyle & SS_NOPREFIX ? newText : text_layout::WithoutPrefix(newText));
    }
    QString Text() const override { return raw; }

private:
    QString raw;
};

} // namespace

NativeWindow* MakeStatic(DWORD style, QWidget* parent, Qt::WindowFlags flags) {
    return new NativeStatic(style, parent, flags);
}
