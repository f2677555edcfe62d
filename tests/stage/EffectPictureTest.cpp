#include "host/stage/windows/browse/EffectPicture.h"

#include <gtest/gtest.h>
#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

template <class Looks> stage::EffectSimulation Simulate(const Looks& looks) {
    stage::Effect effect;
    effect.looks = looks;
    return {effect, 1};
}

QImage Paint(const stage::EffectPainter& painter, float time) {
    QImage image(200, 160, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter drawing(&image);
    painter.Paint(drawing, QRectF(image.rect()), time);
    return image;
}

TEST(EffectPainterTest, ABlindCoversThePictureForItsTime) {
    stage::BlindEffect looks;
    looks.color = {1.0f, 0.0f, 0.0f, 1.0f};
    looks.fadeIn = looks.fadeOut = 1.0f;
    const stage::EffectPainter painter(Simulate(looks));
    // A rest of 0.6 seconds, 1 in, 1.2 whole, 1 out, and a rest.
    EXPECT_FLOAT_EQ(painter.LoopSeconds(), 4.4f);
    const QImage clear = Paint(painter, 0.0f);
    EXPECT_GT(clear.pixelColor(5, 150).blue(), 50) << "water";
    EXPECT_EQ(Paint(painter, 2.0f).pixelColor(5, 150), QColor(255, 0, 0));
    EXPECT_EQ(Paint(painter, 2.0f).pixelColor(195, 5), QColor(255, 0, 0));
    EXPECT_EQ(Paint(painter, 4.3f), clear);
}

TEST(EffectPainterTest, ASequenceIsInThePictureWhileItLasts) {
    stage::SequenceEffect looks;
    looks.frames = {{1.0f, 100.0f, 0.0f, {0.0f, 1.0f, 0.0f, 1.0f}}};
    looks.glow = false;
    const stage::EffectPainter painter(Simulate(looks));
    EXPECT_FLOAT_EQ(painter.LoopSeconds(), 1.6f);
    EXPECT_NE(Paint(painter, 0.5f), Paint(painter, 1.2f));
    EXPECT_EQ(Paint(painter, 1.2f), Paint(painter, 1.5f)) << "nothing but the stage";
    // Where the effect's point is, 30 units to each side, 86 hundredths of the picture are the effect.
    int green = 0;
    const QImage image = Paint(painter, 0.5f);
    for (int y = 0; y < image.height(); ++y) {
        green += image.pixelColor(100, y).green() > 200 && image.pixelColor(100, y).red() < 40 ? 1 : 0;
    }
    EXPECT_GT(green, 10);
}

TEST(EffectPainterTest, ParticlesAreInFullSwingFromTheStart) {
    stage::ParticleEffect looks;
    looks.rate = 50.0f;
    looks.life = 3.0f;
    looks.colorBegin = looks.colorEnd = {1.0f, 1.0f, 1.0f, 1.0f};
    const QImage first = Paint(stage::EffectPainter(Simulate(looks)), 0.0f);
    int white = 0;
    for (int y = 0; y < first.height() / 2; ++y) {
        for (int x = 0; x < first.width(); ++x) {
            white += first.pixelColor(x, y) == QColor(Qt::white) ? 1 : 0;
        }
    }
    EXPECT_GT(white, 0) << "in the upper half, where only old ones are";
}

TEST(EffectPainterTest, EffectsWithoutAnySizeArePaintedToo) {
    stage::FlareEffect flare;
    flare.size = 0.0f;
    EXPECT_FALSE(Paint(stage::EffectPainter(Simulate(flare)), 0.0f).isNull());
    stage::TraceEffect trace;
    EXPECT_FALSE(Paint(stage::EffectPainter(Simulate(trace)), 0.0f).isNull());
    stage::RainEffect rain;
    rain.area = 100000.0f;
    EXPECT_FALSE(Paint(stage::EffectPainter(Simulate(rain)), 0.0f).isNull());
}

TEST(EffectPainterTest, NoEffectCoversThePictureMoreOftenThanCanBeDrawn) {
    stage::ParticleEffect looks;
    looks.rate = 1000.0f;
    looks.life = 4.0f;
    looks.variation = 0.0f;
    looks.speed = 0.0f;
    looks.sizeBegin = looks.sizeEnd = 10000.0f;
    // 4,000 particles of 0.86 of the height, 137.6 pixels, cover 32,000 pixels 2,367 times: every 79th is
    // drawn.
    const stage::EffectPainter huge(Simulate(looks));
    EXPECT_EQ(huge.Sprites(QRectF(0, 0, 200, 160), 1.0f).size(), 51u);
    looks.sizeBegin = looks.sizeEnd = 1.0f;
    EXPECT_NEAR(static_cast<double>(
                    stage::EffectPainter(Simulate(looks)).Sprites(QRectF(0, 0, 200, 160), 1.0f).size()),
                4000.0, 1.0);
}

TEST(EffectPictureTest, TheTimerRunsOnlyWhileAnEffectCanBeSeen) {
    stage::EffectPicture picture(nullptr);
    picture.Show(Simulate(stage::RainEffect()));
    EXPECT_FALSE(picture.IsTicking());
    picture.show();
    EXPECT_TRUE(picture.IsTicking());
    picture.hide();
    EXPECT_FALSE(picture.IsTicking());
    picture.show();
    picture.Show(std::nullopt, "none");
    EXPECT_FALSE(picture.IsTicking());
}

TEST(EffectPictureTest, TimeGoesRound) {
    stage::SequenceEffect looks; // one frame of 0.1 seconds, and 0.6 of rest
    stage::EffectPicture picture(nullptr);
    picture.Show(Simulate(looks));
    picture.Advance(0.5f);
    EXPECT_FLOAT_EQ(picture.Time(), 0.5f);
    picture.Advance(0.5f);
    EXPECT_NEAR(picture.Time(), 0.3f, 1e-5f);
    picture.Show(Simulate(looks));
    EXPECT_EQ(picture.Time(), 0.0f) << "another effect starts anew";
}

} // namespace
