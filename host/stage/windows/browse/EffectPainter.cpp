#include "host/stage/windows/browse/EffectPainter.h"

#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QPainterPath>

namespace stage {

namespace {

/// How much of a depth is seen as height: the sine of the angle that the picture looks down by.
constexpr double kDepthShare = 0.3;
/// Seconds that a blind's key stays whole, and the rest before it and a sequence come again.
constexpr float kBlindHold = 1.2f;
constexpr float kRest = 0.6f;
/// Long enough to have gone round many times; traces of marks are counted from the start.
constexpr float kEndlessSeconds = 120.0f;
constexpr double kSmallDot = 5.0; ///< pixels; smaller ones are drawn without a soft edge
constexpr int kMeasures = 24;

QColor ToColor(const EffectColor& color) {
    return QColor::fromRgbF(std::clamp(color.r, 0.0f, 1.0f), std::clamp(color.g, 0.0f, 1.0f),
                            std::clamp(color.b, 0.0f, 1.0f), std::clamp(color.a, 0.0f, 1.0f));
}

QPointF Projected(const Vector3& place) {
    return {double{place.x}, double{place.y} - double{place.z} * kDepthShare};
}

QColor WithShare(QColor color, double share) {
    color.setAlphaF(static_cast<float>(static_cast<double>(color.alphaF()) * share));
    return color;
}

void PaintGlow(QPainter& painter, const QPointF& middle, double size, const QColor& color) {
    painter.setPen(Qt::NoPen);
    if (size < kSmallDot) {
        painter.setBrush(color);
    } else {
        QRadialGradient soft(middle, size / 2.0);
        soft.setColorAt(0.0, color);
        soft.setColorAt(0.45, WithShare(color, 0.85));
        soft.setColorAt(1.0, WithShare(color, 0.0));
        painter.setBrush(soft);
    }
    painter.drawEllipse(middle, size / 2.0, size / 2.0);
}

void PaintRing(QPainter& painter, const QPointF& middle, double size, const QColor& color) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, std::max(1.5, size * 0.07)));
    // It lies on the ground.
    painter.drawEllipse(middle, size / 2.0, size / 2.0 * kDepthShare);
}

void PaintStar(QPainter& painter, const QPointF& middle, const EffectSprite& sprite, double size,
               const QColor& color) {
    const int rays = std::max(2, static_cast<int>(sprite.rays));
    QPainterPath star;
    for (int i = 0; i < 2 * rays; ++i) {
        const double reach = i % 2 == 0 ? size / 2.0 : size * 0.05;
        const double angle = (180.0 * i / rays + double{sprite.turn} - 90.0) * M_PI / 180.0;
        const QPointF point = middle + reach * QPointF(std::cos(angle), std::sin(angle));
        i == 0 ? star.moveTo(point) : star.lineTo(point);
    }
    star.closeSubpath();
    QRadialGradient fading(middle, std::max(size / 2.0, 1.0));
    fading.setColorAt(0.0, color);
    fading.setColorAt(1.0, WithShare(color, 0.15));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fading);
    painter.drawPath(star);
    PaintGlow(painter, middle, size * 0.3, color);
}

/// From the ground up. Its bends lie where the sprite's turn puts them, so that another turn is another
/// stroke.
void PaintBolt(QPainter& painter, const QPointF& foot, const EffectSprite& sprite, double size,
               const QColor& color) {
    const int bends = std::max(2, static_cast<int>(sprite.rays));
    QPolygonF bolt{foot};
    for (int i = 1; i <= bends; ++i) {
        const double aside = std::sin(i * 12.9898 + std::floor(double{sprite.turn}) * 7.1) * size * 0.09;
        bolt << foot + QPointF(aside, -size * i / bends);
    }
    painter.setBrush(Qt::NoBrush);
    for (const auto& [width, share] : {std::pair(9.0, 0.2), std::pair(4.0, 0.5), std::pair(1.6, 1.0)}) {
        painter.setPen(QPen(WithShare(color, share), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(bolt);
    }
}

void PaintSprite(QPainter& painter, const EffectSprite& sprite, const QPointF& at, const QPointF& tail,
                 double scale) {
    painter.setCompositionMode(sprite.glow ? QPainter::CompositionMode_Plus
                                           : QPainter::CompositionMode_SourceOver);
    const QColor color = ToColor(sprite.color);
    const double size = std::max(double{sprite.size} * scale, 1.0);
    switch (sprite.shape) {
    case EffectShape::Glow:
        return PaintGlow(painter, at, size, color);
    case EffectShape::Ring:
        return PaintRing(painter, at, size, color);
    case EffectShape::Star:
        return PaintStar(painter, at, sprite, size, color);
    case EffectShape::Bolt:
        return PaintBolt(painter, at, sprite, size, color);
    case EffectShape::Line:
        painter.setPen(QPen(color, size, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(at, tail);
        return;
    }
}

/// Evening sky over a dark ground, on which light and dark effects are seen alike.
void PaintStage(QPainter& painter, const QRectF& place, double ground) {
    QLinearGradient sky(place.topLeft(), QPointF(place.left(), ground));
    sky.setColorAt(0.0, QColor(0x2b, 0x3a, 0x4a));
    sky.setColorAt(1.0, QColor(0x5c, 0x6f, 0x7e));
    painter.fillRect(place, sky);
    QLinearGradient floor(QPointF(place.left(), ground), place.bottomLeft());
    floor.setColorAt(0.0, QColor(0x76, 0x80, 0x86));
    floor.setColorAt(1.0, QColor(0x46, 0x4f, 0x55));
    painter.fillRect(QRectF(QPointF(place.left(), ground), place.bottomRight()), floor);
}

/// Something to be seen through a blind: sun, hills, a house, water.
void PaintView(QPainter& painter, const QRectF& place) {
    const double w = place.width();
    const double h = place.height();
    const auto at = [&](double x, double y) { return place.topLeft() + QPointF(x * w, y * h); };
    QLinearGradient sky(place.topLeft(), at(0.0, 0.62));
    sky.setColorAt(0.0, QColor(0x7f, 0xb2, 0xd9));
    sky.setColorAt(1.0, QColor(0xf6, 0xd9, 0xa8));
    painter.fillRect(place, sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xf0, 0xb8));
    painter.drawEllipse(at(0.74, 0.34), h * 0.07, h * 0.07);
    painter.setBrush(QColor(0x6f, 0x8f, 0x7a));
    painter.drawPolygon(QPolygonF({at(0, 0.62), at(0.2, 0.42), at(0.42, 0.56), at(0.6, 0.46), at(1, 0.62)}));
    QLinearGradient sea(at(0.0, 0.62), place.bottomLeft());
    sea.setColorAt(0.0, QColor(0x8f, 0xb9, 0xc4));
    sea.setColorAt(1.0, QColor(0x2e, 0x63, 0x7d));
    painter.fillRect(QRectF(at(0, 0.62), place.bottomRight()), sea);
    painter.fillRect(QRectF(at(0.14, 0.5), at(0.28, 0.66)), QColor(0xe9, 0xe0, 0xcc));
    painter.setBrush(QColor(0xb0, 0x60, 0x3f));
    painter.drawPolygon(QPolygonF({at(0.12, 0.5), at(0.21, 0.4), at(0.3, 0.5)}));
}

/// How long a tenth or so of the picture's width is, as a round number of units.
void PaintScale(QPainter& painter, const QRectF& place, double scale) {
    double units = std::pow(10.0, std::floor(std::log10(place.width() * 0.3 / scale)));
    units *= units * 5.0 * scale <= place.width() * 0.3 ? 5.0 : 1.0;
    const QPointF from = place.bottomLeft() + QPointF(14, -14);
    const QPointF to = from + QPointF(units * scale, 0);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(QColor(255, 255, 255, 150), 1));
    painter.drawLine(from, to);
    painter.drawLine(from + QPointF(0, -3), from + QPointF(0, 3));
    painter.drawLine(to + QPointF(0, -3), to + QPointF(0, 3));
    painter.drawText(from + QPointF(2, -6), QStringLiteral("%1 units").arg(units));
}

} // namespace

EffectPainter::EffectPainter(EffectSimulation ownSimulation) : simulation(std::move(ownSimulation)) {
    Measure();
}

QPointF EffectPainter::Lens::At(const Vector3& place) const {
    const QPointF flat = Projected(place);
    return {middle.x() + flat.x() * scale, middle.y() - flat.y() * scale};
}

void EffectPainter::Measure() {
    if (const auto* rain = std::get_if<RainEffect>(&simulation.TheEffect().looks)) {
        // From within: the box reaches beyond the picture on all sides.
        const double side = double{rain->area} * 0.72;
        extent = QRectF(-side / 2.0, -side / 2.0, side, side);
        return;
    }
    extent = QRectF(-30.0, -10.0, 60.0, 60.0);
    const float seconds = simulation.Seconds() > 0.0f ? simulation.Seconds() : 8.0f;
    for (int i = 0; i < kMeasures; ++i) {
        for (const EffectSprite& sprite : simulation.At(seconds * static_cast<float>(i) / kMeasures)) {
            // What is nearly gone by then may leave the picture.
            if (sprite.color.a < 0.2f) {
                continue;
            }
            const QPointF at = Projected(sprite.place);
            const double half = double{sprite.size} / 2.0;
            const bool stands = sprite.shape == EffectShape::Bolt;
            extent |= QRectF(at - QPointF(half, stands ? 0.0 : half), QSizeF(2.0 * half, 2.0 * half));
        }
    }
    // The middle stays in the middle.
    const double wide = std::max(-extent.left(), extent.right());
    extent.setLeft(-wide);
    extent.setRight(wide);
}

EffectPainter::Lens EffectPainter::LensFor(const QRectF& place) const {
    constexpr double kShare = 0.86;
    const double scale =
        std::min(place.width() * kShare / extent.width(), place.height() * kShare / extent.height());
    return {QPointF(place.center().x(), place.center().y() + extent.center().y() * scale), scale};
}

float EffectPainter::KeySeconds() const {
    const auto* blind = std::get_if<BlindEffect>(&simulation.TheEffect().looks);
    return blind != nullptr ? blind->fadeIn + kBlindHold + blind->fadeOut : 0.0f;
}

float EffectPainter::LoopSeconds() const {
    if (KeySeconds() > 0.0f) {
        return KeySeconds() + 2.0f * kRest;
    }
    return simulation.Seconds() > 0.0f ? simulation.Seconds() + kRest : kEndlessSeconds;
}

float EffectPainter::TimeOf(float time) const {
    const auto& looks = simulation.TheEffect().looks;
    if (const auto* particles = std::get_if<ParticleEffect>(&looks)) {
        return time + particles->life;
    }
    if (const auto* trace = std::get_if<TraceEffect>(&looks)) {
        return time + trace->length;
    }
    return time;
}

void EffectPainter::Paint(QPainter& painter, const QRectF& place, float time) const {
    painter.save();
    painter.setClipRect(place);
    painter.setRenderHint(QPainter::Antialiasing);
    if (simulation.TheEffect().Kind() == EffectKind::Blind) {
        PaintBlind(painter, place, time);
    } else {
        PaintSprites(painter, place, time);
    }
    painter.restore();
}

std::vector<EffectSprite> EffectPainter::Sprites(const QRectF& place, float time) const {
    std::vector<EffectSprite> sprites = simulation.At(TimeOf(time));
    const Lens lens = LensFor(place);
    const double whole = place.width() * place.height();
    double covered = 0.0;
    for (const EffectSprite& sprite : sprites) {
        const double size = double{sprite.size} * lens.scale;
        const QPointF way = lens.At(sprite.tail) - lens.At(sprite.place);
        covered += std::min(size * (size + std::hypot(way.x(), way.y())), whole);
    }
    const auto stride = static_cast<std::size_t>(std::ceil(covered / (whole * kMostCovers)));
    if (stride > 1) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < sprites.size(); i += stride) {
            sprites[kept++] = sprites[i];
        }
        sprites.resize(kept);
    }
    return sprites;
}

void EffectPainter::PaintSprites(QPainter& painter, const QRectF& place, float time) const {
    const Lens lens = LensFor(place);
    const bool isRain = simulation.TheEffect().Kind() == EffectKind::Rain;
    PaintStage(painter, place,
               isRain ? place.top() + place.height() * 0.8
                      : std::min(lens.middle.y() - 1.0, place.bottom() - place.height() * 0.06));
    for (const EffectSprite& sprite : Sprites(place, time)) {
        PaintSprite(painter, sprite, lens.At(sprite.place), lens.At(sprite.tail), lens.scale);
    }
    PaintScale(painter, place, lens.scale);
}

void EffectPainter::PaintBlind(QPainter& painter, const QRectF& place, float time) const {
    PaintView(painter, place);
    painter.fillRect(place, ToColor(simulation.Screen(time - kRest, KeySeconds())));
}

} // namespace stage
