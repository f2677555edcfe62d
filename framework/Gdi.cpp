#include "framework/Gdi.h"

#include "framework/Constants.h"
#include "framework/private/BitmapReader.h"
#include "framework/private/Surface.h"
#include "framework/Resource.h"

#include <cmath>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)

BOOL CPen::CreatePen(int penStyle, int penWidth, COLORREF penColor) {
    style = penStyle;
    width = penWidth;
    color = penColor;
    return TRUE;
}

BOOL CPen::DeleteObject() {
    return CreatePen(PS_SOLID, 0, 0);
}

BOOL CBrush::CreateSolidBrush(COLORREF brushColor) {
    hollow = false;
    color = brushColor;
    return TRUE;
}

BOOL CBrush::DeleteObject() {
    return CreateSolidBrush(0xFFFFFF);
}

BOOL CFont::CreatePointFont(int tenthsOfPoint, const char* faceName, CDC* /*dc*/) {
    constexpr double kPixelsPerInch = 96.0;
    face = faceName ? faceName : "";
    pixelHeight = std::max(1, static_cast<int>(std::lround(tenthsOfPoint * kPixelsPerInch / 720.0)));
    bold = false;
    italic = false;
    return TRUE;
}

BOOL CFont::DeleteObject() {
    return CreatePointFont(90, "");
}

CBitmap::CBitmap() = default;
CBitmap::~CBitmap() = default;

BOOL CBitmap::LoadBitmap(UINT id) {
    bool hasAlpha = false;
    std::optional<QImage> image = ReadBitmap(FindResource(AfxGetResourceHandle(), RT_BITMAP, id), &hasAlpha);
    if (!image) {
        return FALSE;
    }
    data = std::make_shared<BitmapData>(*std::move(image), hasAlpha);
    return TRUE;
}

namespace {

std::shared_ptr<BitmapData> MakeBitmap(int width, int height, double pixelRatio) {
    constexpr std::int64_t kMaxPixels = 64 << 20;
    if (width < 0 || height < 0 || std::int64_t{width} * height > kMaxPixels) {
        return nullptr;
    }
    return std::make_shared<BitmapData>(CSize{width, height}, pixelRatio);
}

} // namespace

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    const QPainter* painter = dc ? dc->State().painter : nullptr;
    data = MakeBitmap(width, height,
                      painter && painter->device() ? painter->device()->devicePixelRatioF() : 1.0);
    return data != nullptr;
}

int CBitmap::GetBitmap(BITMAP* out) const {
    if (!data || !out) {
        return 0;
    }
    *out = BITMAP{data->size.cx, data->size.cy, 32};
    return sizeof(BITMAP);
}

BOOL CBitmap::DeleteObject() {
    data.reset();
    return TRUE;
}

BOOL CBitmap::SavePng(const std::string& path) const {
    return data && data->Image().save(QString::fromStdString(path), "PNG");
}

CGdiObject* StockObject(int number) {
    static CBrush whiteBrush(0xFFFFFF);
    static CBrush lightBrush(0xC0C0C0);
    static CBrush grayBrush(0x808080);
    static CBrush darkBrush(0x404040);
    static CBrush blackBrush(0);
    static CBrush nullBrush;
    static CPen whitePen(PS_SOLID, 0, 0xFFFFFF);
    static CPen blackPen(PS_SOLID, 0, 0);
    static CPen nullPen(PS_NULL, 0, 0);
    static CFont systemFont;
    nullBrush.hollow = true;
    switch (number) {
    case WHITE_BRUSH:
        return &whiteBrush;
    case LTGRAY_BRUSH:
        return &lightBrush;
    case GRAY_BRUSH:
        return &grayBrush;
    case DKGRAY_BRUSH:
        return &darkBrush;
    case BLACK_BRUSH:
        return &blackBrush;
    case NULL_BRUSH:
        return &nullBrush;
    case WHITE_PEN:
        return &whitePen;
    case BLACK_PEN:
        return &blackPen;
    case NULL_PEN:
        return &nullPen;
    case SYSTEM_FONT:
    case DEFAULT_GUI_FONT:
        return &systemFont;
    default:
        return nullptr;
    }
}

COLORREF GetSysColor(int index) {
    switch (index) {
    case COLOR_WINDOW:
        return 0xFFFFFF;
    case COLOR_HIGHLIGHT:
        return RGB(48, 140, 198);
    case COLOR_HIGHLIGHTTEXT:
        return 0xFFFFFF;
    case COLOR_MENU:
    case COLOR_BTNFACE:
        return RGB(239, 239, 239);
    case COLOR_BTNSHADOW:
        return RGB(160, 160, 160);
    case COLOR_GRAYTEXT:
        return RGB(120, 120, 120);
    default:
        return 0;
    }
}
