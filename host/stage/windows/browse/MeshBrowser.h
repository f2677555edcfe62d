#pragma once

#include "host/stage/windows/browse/BrowserFrame.h"

#include <glm/glm.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;
namespace mesh {
class Mesh;
} // namespace mesh

namespace stage {

class ModelPicture;

/// What a browser shows of an object: a copy, good for as long as it is wanted.
struct BrowsedObject {
    bool exists = false;
    QString name;
    QString meshName;
    QString meshError;                      ///< why the mesh can't be used, empty if it can or there is none
    std::shared_ptr<const mesh::Mesh> mesh; ///< null without a usable one
    std::vector<glm::mat4> pose;            ///< mesh space, one a node; empty at rest
};

/// Chooses something that a mesh has by its name: a list with a search field on the left, a picture on the
/// right. Enter and a double click take, Escape leaves everything alone.
class MeshBrowser : public BrowserFrame {
    Q_OBJECT
public:
    ~MeshBrowser() override;

    /// Runs it to its end and deletes it. Nothing if the user chose nothing, or if the object or the window
    /// went meanwhile.
    static std::optional<std::string> Run(MeshBrowser* browser);
    /// The object goes: closes, and whatever was chosen doesn't count.
    void ObjectGone();
    /// The name in the current row.
    std::optional<std::string> Chosen() const;
    /// Number of the current row's element or animation; -1 without one, and for a whole object.
    int CurrentIndex() const;

    QLineEdit* search;
    QTreeWidget* list;
    ModelPicture* picture;
    QLabel* note; ///< what is missing or not found

protected:
    MeshBrowser(const BrowsedObject& browsed, const QString& title, const QString& key, QWidget* parent);

    /// Adds a row for a name; `index` as in CurrentIndex.
    QTreeWidgetItem* AddRow(QTreeWidgetItem* above, const QString& text, const std::string& name, int index);
    static int IndexOf(const QTreeWidgetItem* row);
    static std::string NameOf(const QTreeWidgetItem* row);
    /// Makes the row the present one and scrolls to it. Null: nothing is chosen yet, and a note says that the
    /// mesh has nothing of that name.
    void ShowPresent(QTreeWidgetItem* row, const std::string& name);
    /// What to say where the list has no rows at all.
    void SetPlaceholder(const QString& text);
    /// Another row became current, or none; the picture follows.
    virtual void CurrentChanged() = 0;
    /// What to say of an object without a picture.
    static QString WhyNoPicture(const BrowsedObject& browsed);

    QVBoxLayout* pictureSide; ///< the picture with room below it
    const BrowsedObject object;

private:
    QWidget* MakeListSide();
    QWidget* MakePictureSide();
    void Connect();
    void Filter(const QString& text);
    bool FilterRow(QTreeWidgetItem* row, const QString& text, QTreeWidgetItem*& firstMatch);
    bool Step(bool down) override;
    void UpdateState();

    QTreeWidgetItem* presentRow = nullptr; ///< comes back when the search is cleared
    QString presentNote;
    QString placeholder;
    bool gone = false;
};

} // namespace stage
