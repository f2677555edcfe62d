#include "host/stage/windows/browse/AnimationBrowser.h"

#include "host/engine/mesh/Mesh.h"
#include "host/stage/windows/browse/ModelPicture.h"
#include "host/stage/windows/browse/PlayBar.h"

#include <cmath>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace stage {

AnimationBrowser::AnimationBrowser(const BrowsedObject& browsed, const std::string& present, QWidget* parent)
    : MeshBrowser(browsed, tr("Animation"), "animation", parent), playBar(new PlayBar(this)) {
    setObjectName("AnimationBrowser");
    pictureSide->insertWidget(1, playBar);
    connect(playBar, &PlayBar::Moved, this,
            [this](float seconds) { picture->SetClip(CurrentIndex(), seconds); });
    connect(playBar, &PlayBar::PlayingChanged, this, [this] { picture->SetMoving(playBar->IsPlaying()); });
    Fill(present);
}

void AnimationBrowser::Fill(const std::string& present) {
    list->setRootIsDecorated(false);
    list->setHeaderLabels(
        {tr("Animation"), tr("Seconds"), tr("Frames at %1/s").arg(PlayBar::kFramesPerSecond)});
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    list->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    list->headerItem()->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    QTreeWidgetItem* found = nullptr;
    int index = 0;
    for (const mesh::MeshClip& clip :
         object.mesh != nullptr ? object.mesh->clips : std::vector<mesh::MeshClip>()) {
        QTreeWidgetItem* row = AddRow(nullptr, QString::fromStdString(clip.name), clip.name, index++);
        row->setText(1, QString::number(clip.duration, 'f', 2));
        row->setText(2, QString::number(std::lround(clip.duration * PlayBar::kFramesPerSecond)));
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        found = found == nullptr && clip.name == present ? row : found;
    }
    if (index == 0) {
        SetPlaceholder(object.mesh != nullptr ? tr("%1 has no animations.").arg(object.name)
                                              : WhyNoPicture(object));
    }
    ShowPresent(found, present);
}

void AnimationBrowser::CurrentChanged() {
    const int clip = CurrentIndex();
    const bool known = object.mesh != nullptr && clip >= 0;
    playBar->Start(known ? object.mesh->clips[static_cast<std::size_t>(clip)].duration : 0.0f);
    picture->SetMoving(playBar->IsPlaying());
    picture->SetClip(clip, 0.0f);
    picture->ShowWhole(clip);
}

bool AnimationBrowser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        playBar->SetPlaying(!playBar->IsPlaying());
        return true;
    }
    return MeshBrowser::eventFilter(watched, event);
}

} // namespace stage
