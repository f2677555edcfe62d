#include "host/stage/windows/browse/SoundPreview.h"

#include "host/stage/windows/browse/WaveCache.h"
#include "host/stage/windows/browse/WaveView.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <QAbstractItemView>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QStyle>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

namespace stage {

namespace {

constexpr const char* kSize = "browse/sound/size";
constexpr QSize kFirstSize(860, 480);
constexpr int kWidth = 260;
constexpr int kCursorMs = 33;
/// A read ends the first time that it has lasted so long, well below what a user feels.
constexpr qint64 kReadMs = 20;
/// A fraction of a millisecond of decoding.
constexpr int kReadSamples = 32768;

bool IsSoundName(const QString& path) {
    return path.endsWith(".wav", Qt::CaseInsensitive) || path.endsWith(".ogg", Qt::CaseInsensitive);
}

bool OffersSounds(const QFileDialog& dialog) {
    return std::ranges::any_of(dialog.nameFilters(), [](const QString& filter) {
        return filter.contains("*.wav", Qt::CaseInsensitive) || filter.contains("*.ogg", Qt::CaseInsensitive);
    });
}

/// "0:02.35"
QString TimeText(float seconds) {
    const int hundredths = static_cast<int>(std::lround(seconds * 100.0f));
    return QStringLiteral("%1:%2.%3")
        .arg(hundredths / 6000)
        .arg(hundredths / 100 % 60, 2, 10, QLatin1Char('0'))
        .arg(hundredths % 100, 2, 10, QLatin1Char('0'));
}

QString ChannelText(int channels) {
    return channels == 1   ? SoundPreview::tr("mono")
           : channels == 2 ? SoundPreview::tr("stereo")
                           : SoundPreview::tr("%1 channels").arg(channels);
}

} // namespace

std::function<QWidget*(QFileDialog&)> SoundPreview::Maker(std::function<QString()> levelFolder) {
    return [cache = std::make_shared<WaveCache>(),
            folder = std::move(levelFolder)](QFileDialog& dialog) -> QWidget* {
        if (!OffersSounds(dialog)) {
            return nullptr;
        }
        auto* preview = new SoundPreview(dialog, cache);
        preview->OfferFolder(folder ? folder() : QString());
        return preview;
    };
}

SoundPreview::SoundPreview(QFileDialog& fileDialog, std::shared_ptr<WaveCache> waveCache)
    : QWidget(&fileDialog), wave(new WaveView(this)), name(new QLabel(this)), info(new QLabel(this)),
      button(new QPushButton(this)), dialog(fileDialog), cache(std::move(waveCache)) {
    setObjectName("SoundPreview");
    setFixedWidth(kWidth);
    name->setProperty("role", "title");
    name->setMinimumHeight(name->fontMetrics().lineSpacing()); // kept free, so that nothing jumps
    info->setMinimumHeight(info->fontMetrics().lineSpacing());
    name->setTextFormat(Qt::PlainText);
    info->setProperty("role", "hint");
    info->setTextFormat(Qt::PlainText);
    info->setWordWrap(true);
    button->setAutoDefault(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 0, 0, 0);
    layout->addWidget(name);
    layout->addWidget(wave, 1);
    layout->addWidget(info);
    layout->addWidget(button);
    wave->setMaximumHeight(200);
    layout->addStretch();
    connect(button, &QPushButton::clicked, this, &SoundPreview::Toggle);
    connect(wave, &WaveView::Pressed, this, &SoundPreview::PlayFrom);
    connect(&dialog, &QFileDialog::currentChanged, this, &SoundPreview::ShowFile);
    connect(&dialog, &QDialog::finished, this, [this] {
        Stop();
        KeepSize();
    });
    readTimer.setInterval(0);
    connect(&readTimer, &QTimer::timeout, this, &SoundPreview::ReadOn);
    playTimer.setInterval(kCursorMs);
    connect(&playTimer, &QTimer::timeout, this,
            [this] { Advance(static_cast<float>(elapsed.restart()) / 1000.0f); });
    WatchLists();
    WidenColumns();
    const QSize size = QSettings().value(kSize).toSize();
    dialog.resize(size.isValid() ? size : kFirstSize);
    ShowFile(QString());
}

void SoundPreview::WatchLists() {
    for (auto* list : dialog.findChildren<QAbstractItemView*>()) {
        if (list->objectName() == "listView" || list->objectName() == "treeView") {
            list->installEventFilter(this);
            // A folder that is typed in is entered without a word of the dialog's.
            connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                    [this, chosen = list->selectionModel()] {
                        if (!chosen->hasSelection()) {
                            ShowFile(QString());
                        }
                    });
        }
    }
}

/// The toolkit's first widths cut sizes, types and dates.
void SoundPreview::WidenColumns() {
    constexpr const char* kLongest[] = {"", "1023.99 KiB", "wav File", "22 Nov 2026 10:01:57 "};
    constexpr int kMargin = 16;
    if (const auto* tree = dialog.findChild<QTreeView*>("treeView")) {
        tree->header()->setStretchLastSection(false);
        tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        for (int column = 1; column < static_cast<int>(std::size(kLongest)); ++column) {
            tree->header()->resizeSection(column,
                                          fontMetrics().horizontalAdvance(kLongest[column]) + kMargin);
        }
    }
}

void SoundPreview::OfferFolder(const QString& folder) {
    QList<QUrl> places = dialog.sidebarUrls();
    for (const QString& offered : {folder + "/sounds", folder}) {
        const QUrl place = QUrl::fromLocalFile(QDir::cleanPath(offered));
        if (!folder.isEmpty() && QFileInfo(offered).isDir() && !places.contains(place)) {
            places.prepend(place);
        }
    }
    dialog.setSidebarUrls(places);
}

void SoundPreview::KeepSize() {
    QSettings().setValue(kSize, dialog.size());
}

void SoundPreview::ShowFile(const QString& path) {
    Stop();
    readTimer.stop();
    file.clear();
    info->clear();
    const QFileInfo chosen(path);
    const bool isSound = IsSoundName(path) && !chosen.isDir();
    name->setText(isSound ? name->fontMetrics().elidedText(chosen.fileName(), Qt::ElideMiddle, kWidth - 16)
                          : QString());
    if (!isSound) {
        wave->Show(nullptr, tr("Choose a sound to see and hear it."));
    } else {
        try {
            const std::shared_ptr<sound::SoundWave> shown = cache->Get(path.toStdString());
            wave->Show(shown);
            info->setText(tr("%1   %2 Hz   %3")
                              .arg(TimeText(shown->Seconds()))
                              .arg(shown->Rate())
                              .arg(ChannelText(shown->Channels())));
            file = path;
            if (!shown->IsComplete()) {
                readTimer.start();
            }
        } catch (const sound::SoundError& error) {
            // The reason without the path, which the dialog shows.
            QString told = QString::fromStdString(error.what());
            told.remove(0, told.startsWith(path + ": ") ? path.size() + 2 : 0);
            wave->Show(nullptr, tr("This file can't be played.\n%1").arg(told));
        }
    }
    UpdateButton();
}

void SoundPreview::ReadOn() {
    QElapsedTimer spent;
    spent.start();
    const std::shared_ptr<sound::SoundWave> shown = wave->Wave();
    bool more = shown != nullptr;
    while (more && spent.elapsed() < kReadMs) {
        more = shown->ReadOn(kReadSamples);
    }
    if (!more) {
        readTimer.stop();
    }
    wave->update();
}

void SoundPreview::UpdateButton() {
    button->setEnabled(!file.isEmpty());
    button->setText(playing ? tr("Stop") : tr("Play"));
    button->setIcon(style()->standardIcon(playing ? QStyle::SP_MediaStop : QStyle::SP_MediaPlay));
    button->setToolTip(tr("The space bar in the list does the same; a click on the wave plays from there."));
}

void SoundPreview::Toggle() {
    playing ? Stop() : PlayFrom(0.0f);
}

void SoundPreview::PlayFrom(float share) {
    if (file.isEmpty() || wave->Wave() == nullptr) {
        return;
    }
    Stop();
    sound::SoundRequest request;
    request.path = file.toStdString();
    request.offset = wave->Wave()->Seconds() * share;
    sound = player.Play(request);
    const QString told = QString::fromStdString(player.LastError());
    info->setToolTip(sound != 0 ? QString() : told);
    if (sound == 0 && !info->text().contains('\n')) {
        info->setText(info->text() + '\n' + tr("It can't be heard: %1.").arg(told));
    }
    playing = true;
    position = request.offset;
    wave->SetCursorAt(share);
    elapsed.start();
    playTimer.start();
    UpdateButton();
}

void SoundPreview::Stop() {
    playTimer.stop();
    player.StopAll();
    sound = 0;
    position = 0.0f;
    if (playing) {
        playing = false;
        wave->SetCursorAt(-1.0f);
        UpdateButton();
    }
}

void SoundPreview::Advance(float seconds) {
    if (!playing || wave->Wave() == nullptr) {
        return;
    }
    position += seconds;
    const float length = wave->Wave()->Seconds();
    if (position >= length || (sound != 0 && !player.IsPlaying(sound))) {
        Stop();
    } else {
        wave->SetCursorAt(position / length);
    }
}

bool SoundPreview::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && !file.isEmpty()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier) {
            if (!key->isAutoRepeat()) {
                Toggle();
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SoundPreview::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    const QStringList files = dialog.selectedFiles();
    if (file.isEmpty() && !files.isEmpty() && QFileInfo(files.front()).isFile()) {
        ShowFile(files.front());
    } else if (wave->Wave() != nullptr && !wave->Wave()->IsComplete()) {
        readTimer.start();
    }
}

void SoundPreview::hideEvent(QHideEvent* event) {
    Stop();
    readTimer.stop();
    QWidget::hideEvent(event);
}

} // namespace stage
