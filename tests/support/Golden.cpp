#include "tests/support/Golden.h"

#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "tests/support/Paths.h"

#include <gtest/gtest.h>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <cstdlib>
#include <filesystem>

namespace {

QImage Masked(const QImage& picture, const std::vector<CRect>& masks) {
    QImage masked = picture.convertToFormat(QImage::Format_RGB32);
    masked.setDevicePixelRatio(1.0);
    QPainter painter(&masked);
    for (const CRect& r : masks) {
        painter.fillRect(r.left, r.top, r.Width(), r.Height(), QColor(0xFF, 0x00, 0xFF));
    }
    return masked;
}

bool RemakeAsked() {
    const char* asked = std::getenv("FILMS_REMAKE_GOLDENS");
    return asked != nullptr && std::string(asked) == "1";
}

void Save(const QImage& picture, const std::filesystem::path& path) {
    std::filesystem::create_directories(path.parent_path());
    ASSERT_TRUE(picture.save(QString::fromStdString(path.string()), "PNG")) << path;
}

} // namespace

QImage PictureOf(CWnd& window) {
    return NativeWidget(window)->grab().toImage();
}

int CountDifferences(const QImage& picture, const QImage& stored, QImage* diff) {
    *diff = picture;
    if (picture.size() != stored.size()) {
        return picture.width() * picture.height();
    }
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const bool same = (picture.pixel(x, y) & 0xFFFFFF) == (stored.pixel(x, y) & 0xFFFFFF);
            count += same ? 0 : 1;
            diff->setPixel(x, y, same ? qRgb(255, 255, 255) : qRgb(255, 0, 0));
        }
    }
    return count;
}

void ExpectGolden(const QImage& picture, const std::string& folder, const std::string& name,
                  const std::vector<CRect>& masks) {
    const std::filesystem::path kept =
        std::filesystem::path(SourceFolder()) / folder / "golden" / (name + ".png");
    const QImage masked = Masked(picture, masks);
    if (RemakeAsked()) {
        Save(masked, kept);
        return;
    }
    const QImage stored(QString::fromStdString(kept.string()));
    ASSERT_FALSE(stored.isNull()) << "no picture " << kept;
    QImage diff;
    const int different = CountDifferences(masked, stored.convertToFormat(QImage::Format_RGB32), &diff);
    if (different == 0) {
        return;
    }
    const std::filesystem::path out = std::filesystem::path(testing::TempDir()) / "films_golden";
    Save(masked, out / (name + "_out.png"));
    Save(stored, out / (name + "_stored.png"));
    Save(diff, out / (name + "_diff.png"));
    ADD_FAILURE() << name << ": " << different << " pixels differ, see " << out;
}
