#include "host/stage/windows/assets/AssetPlayer.h"

#include "host/sound/SoundFile.h"
#include "host/stage/windows/browse/EffectPicture.h"
#include "host/stage/windows/browse/WaveView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace stage {

namespace {
constexpr int kHeight = 170;
constexpr int kCursorMs = 33;
constexpr int kReadSamples = 1 << 18;
constexpr std::uint32_t kSeed = 1;
} // namespace

AssetPlayer::AssetPlayer(QWidget* parent)
    : QWidget(parent), stack(new QStackedWidget(this)), wave(new WaveView(this)),
      effect(new EffectPicture(this)), label(new QLabel(this)) {
    setObjectName("AssetPlayer");
    label->setTextFormat(Qt::PlainText);
    auto* stop = new QToolButton(this);
    stop->setObjectName("AssetPlayerStop");
    stop->setIcon(style()->standardIcon(QStyle::SP_MediaStop));
    stop->setToolTip(tr("Stop"));
    stop->setAutoRaise(true);
    connect(stop, &QToolButton::clicked, this, &AssetPlayer::Close);
    stack->addWidget(wave);
    stack->addWidget(effect);
    stack->setFixedHeight(kHeight);
    auto* head = new QHBoxLayout;
    head->addWidget(label, 1);
    head->addWidget(stop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(stack);
    connect(wave, &WaveView::Pressed, this, [this](float share) { PlaySound(file, share); });
    ticker.setInterval(kCursorMs);
    connect(&ticker, &QTimer::timeout, this, &AssetPlayer::Advance);
    hide();
}

AssetPlayer::~AssetPlayer() = default;

void AssetPlayer::Play(const Asset& asset) {
    Silence();
    playing = QString::fromStdString(asset.name);
    label->setText(label->fontMetrics().elidedText(playing, Qt::ElideMiddle, width() - 40));
    label->setToolTip(playing);
    effect->Show(std::nullopt);
    show();
    if (asset.kind == AssetKind::Sound) {
        stack->setCurrentWidget(wave);
        PlaySound(asset.path, 0.0f);
    } else {
        stack->setCurrentWidget(effect);
        PlayEffect(asset);
    }
}

void AssetPlayer::PlaySound(const std::string& path, float share) {
    Silence();
    try {
        if (file != path || wave->Wave() == nullptr || share == 0.0f) {
            file = path;
            wave->Show(std::make_shared<sound::SoundWave>(path));
        }
    } catch (const sound::SoundError& failure) {
        wave->Show(nullptr, tr("This file can't be played.\n%1").arg(QString::fromUtf8(failure.what())));
        return;
    }
    sound::SoundRequest request;
    request.path = path;
    request.offset = startAt = wave->Wave()->Seconds() * share;
    sound = player.Play(request);
    wave->setToolTip(sound != 0
                         ? QString()
                         : tr("It can't be heard: %1.").arg(QString::fromStdString(player.LastError())));
    elapsed.start();
    ticker.start();
}

void AssetPlayer::PlayEffect(const Asset& asset) {
    try {
        effect->Show(EffectSimulation(EffectFile::Read(asset.effect, asset.path), kSeed));
    } catch (const EffectFileError& failure) {
        effect->Show(std::nullopt, QString::fromUtf8(failure.what()));
    }
}

/// Where there is no sound device the cursor goes its way in silence.
void AssetPlayer::Advance() {
    const auto shown = wave->Wave();
    if (shown == nullptr) {
        ticker.stop();
        return;
    }
    if (shown->ReadOn(kReadSamples)) {
        wave->update();
    }
    const float seconds = startAt + static_cast<float>(elapsed.elapsed()) / 1000.0f;
    const bool isOver = seconds >= shown->Seconds() || (sound != 0 && !player.IsPlaying(sound));
    wave->SetCursorAt(isOver ? -1.0f : seconds / shown->Seconds());
    if (isOver && shown->IsComplete()) {
        ticker.stop();
    }
}

void AssetPlayer::Silence() {
    ticker.stop();
    player.StopAll();
    sound = 0;
}

void AssetPlayer::Close() {
    hide();
    playing.clear();
}

void AssetPlayer::hideEvent(QHideEvent* event) {
    Silence();
    QWidget::hideEvent(event);
}

} // namespace stage
