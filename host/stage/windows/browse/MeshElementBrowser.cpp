#include "host/stage/windows/browse/MeshElementBrowser.h"

#include "host/engine/mesh/Mesh.h"
#include "host/stage/windows/browse/ModelPicture.h"
#include "host/stage/windows/ThemeColors.h"

#include <algorithm>
#include <QHeaderView>
#include <QMouseEvent>
#include <QTreeWidget>

namespace stage {

namespace {

// Names that begin so are shown elsewhere without it and the character behind.
constexpr std::string_view kBiped = "Bip01";
constexpr std::size_t kBipedDropped = 6;

bool IsShortFor(const std::string& text, const std::string& name) {
    return !text.empty() && name.size() > kBipedDropped && name.starts_with(kBiped) &&
           std::string_view(name).substr(kBipedDropped) == text;
}

/// In a word, what each node of the mesh is.
std::vector<QString> KindsOf(const mesh::Mesh& mesh) {
    std::vector<QString> kinds(mesh.nodes.size(), MeshElementBrowser::tr("point"));
    for (const mesh::MeshSkin& skin : mesh.skins) {
        for (const int joint : skin.joints) {
            kinds[static_cast<std::size_t>(joint)] = MeshElementBrowser::tr("bone");
        }
    }
    for (const mesh::MeshSource& source : mesh.sources) {
        kinds[static_cast<std::size_t>(source.node)] = MeshElementBrowser::tr("part");
    }
    return kinds;
}

} // namespace

MeshElementBrowser::MeshElementBrowser(const BrowsedObject& browsed, const std::string& present,
                                       QWidget* parent)
    : MeshBrowser(browsed, tr("Mesh element"), "element", parent) {
    setObjectName("MeshElementBrowser");
    picture->SetMarks(ModelScene::Marks::Elements);
    Fill();
    ShowPresent(RowOf(present), present);
    connect(picture, &ModelPicture::ElementClicked, this, [this](int element) {
        if (element >= 0) {
            search->clear();
            list->setCurrentItem(rows[static_cast<std::size_t>(element)]);
        }
    });
}

void MeshElementBrowser::Fill() {
    list->setColumnCount(2);
    list->setHeaderHidden(true);
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(1, QHeaderView::Fixed);
    list->header()->resizeSection(1, list->fontMetrics().horizontalAdvance("point") + 16);
    if (!object.exists) {
        return;
    }
    whole = AddRow(nullptr, tr("Whole object"), "", -1);
    QFont strong = list->font();
    strong.setWeight(QFont::DemiBold);
    whole->setFont(0, strong);
    if (object.mesh == nullptr) {
        return;
    }
    const std::vector<QString> kinds = KindsOf(*object.mesh);
    const QBrush muted(QColor::fromRgb(Color::kMuted));
    for (const mesh::MeshNode& node : object.mesh->nodes) {
        QTreeWidgetItem* above = node.parent >= 0 ? rows[static_cast<std::size_t>(node.parent)] : nullptr;
        QTreeWidgetItem* row =
            AddRow(above, QString::fromStdString(node.name), node.name, static_cast<int>(rows.size()));
        row->setText(1, kinds[rows.size()]);
        row->setForeground(1, muted);
        rows.push_back(row);
    }
    list->expandAll();
}

QTreeWidgetItem* MeshElementBrowser::RowOf(const std::string& name) const {
    if (name.empty()) {
        return whole;
    }
    auto found = std::ranges::find_if(rows, [&](const auto* row) { return NameOf(row) == name; });
    if (found == rows.end()) {
        found = std::ranges::find_if(rows, [&](const auto* row) { return IsShortFor(name, NameOf(row)); });
    }
    return found != rows.end() ? *found : nullptr;
}

void MeshElementBrowser::Show(const QTreeWidgetItem* row) {
    picture->SetElement(IndexOf(row));
}

void MeshElementBrowser::CurrentChanged() {
    Show(list->currentItem());
}

void MeshElementBrowser::showEvent(QShowEvent* event) {
    restingMouse.reset();
    mouseMoved = false;
    MeshBrowser::showEvent(event);
}

/// A browser that opens under the mouse shows the present element, not the one that happens to lie there.
void MeshElementBrowser::Hover(const QMouseEvent& move) {
    const QPoint place = move.globalPosition().toPoint();
    restingMouse = restingMouse.value_or(place);
    mouseMoved = mouseMoved || place != *restingMouse;
    if (const QTreeWidgetItem* row = list->itemAt(move.position().toPoint()); mouseMoved && row != nullptr) {
        Show(row);
    }
}

bool MeshElementBrowser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list->viewport() && event->type() == QEvent::MouseMove) {
        Hover(*static_cast<QMouseEvent*>(event));
    }
    if (watched == list->viewport() && event->type() == QEvent::Leave) {
        Show(list->currentItem());
    }
    return MeshBrowser::eventFilter(watched, event);
}

} // namespace stage
