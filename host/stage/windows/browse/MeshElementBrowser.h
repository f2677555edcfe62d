#pragma once

#include "host/stage/windows/browse/MeshBrowser.h"

#include <optional>
#include <QPoint>

class QMouseEvent;

namespace stage {

/// Chooses an element of a mesh in the tree of its bones and nodes. The picture lights up the element that
/// the mouse was moved over, else the current one; a click in the picture makes an element current. The first
/// row is the whole object, whose name is empty.
class MeshElementBrowser : public MeshBrowser {
    Q_OBJECT
public:
    /// `present` is found by its name, or by what remains of one that begins with "Bip01" without its first
    /// six characters.
    MeshElementBrowser(const BrowsedObject& browsed, const std::string& present, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void CurrentChanged() override;

private:
    void Fill();
    QTreeWidgetItem* RowOf(const std::string& name) const;
    void Show(const QTreeWidgetItem* row);
    void Hover(const QMouseEvent& move);

    std::optional<QPoint> restingMouse; ///< where it stood when the browser came up under it; screen pixels
    bool mouseMoved = false;            ///< from there
    QTreeWidgetItem* whole = nullptr;
    std::vector<QTreeWidgetItem*> rows; ///< one an element
};

} // namespace stage
