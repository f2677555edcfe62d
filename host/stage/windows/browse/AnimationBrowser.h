#pragma once

#include "host/stage/windows/browse/MeshBrowser.h"

namespace stage {

class PlayBar;

/// Chooses an animation of a mesh in a list with lengths; the current one plays on the model.
class AnimationBrowser : public MeshBrowser {
    Q_OBJECT
public:
    AnimationBrowser(const BrowsedObject& browsed, const std::string& present, QWidget* parent);

    PlayBar* playBar;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void CurrentChanged() override;

private:
    void Fill(const std::string& present);
};

} // namespace stage
