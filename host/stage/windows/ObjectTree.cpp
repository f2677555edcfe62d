#include "host/stage/windows/ObjectTree.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/Theme.h"

#include <algorithm>
#include <QCursor>
#include <QDropEvent>
#include <QHeaderView>
#include <QItemSelection>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QVBoxLayout>
#include <utility>
#include <vector>

namespace stage {

namespace {
constexpr int kSignWidth = 24; ///< pixels of the columns of eye and lock

/// Rows that follow each other make one range: a selection works through its ranges again for each that is
/// added.
QItemSelection RangesOf(std::vector<QModelIndex> rows) {
    std::ranges::sort(rows, [](const QModelIndex& a, const QModelIndex& b) {
        const auto keyOf = [](const QModelIndex& index) {
            return std::pair(index.parent().internalPointer(), index.row());
        };
        return keyOf(a) < keyOf(b);
    });
    QItemSelection ranges;
    for (std::size_t first = 0; first < rows.size();) {
        std::size_t last = first;
        while (last + 1 < rows.size() && rows[last + 1].parent() == rows[first].parent() &&
               rows[last + 1].row() == rows[last].row() + 1) {
            ++last;
        }
        ranges.append(QItemSelectionRange(rows[first], rows[last]));
        first = last + 1;
    }
    return ranges;
}

bool IsAnyVisible(const std::vector<engine::SceneObject*>& objects) {
    return std::ranges::any_of(objects, [](const auto* object) { return object->visible != 0; });
}

bool AreAllLocked(const std::vector<engine::SceneObject*>& objects) {
    return std::ranges::all_of(objects, [](const auto* object) { return object->notes.locked; });
}
} // namespace

ObjectTreeWidget::ObjectTreeWidget(EditorHost& editorHost, ObjectCommands& objectCommands, QWidget* parent)
    : QTreeWidget(parent), host(editorHost), commands(objectCommands) {
    setObjectName("ObjectTree");
    setColumnCount(3);
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(kSignWidth);
    header()->setSectionResizeMode(kNameColumn, QHeaderView::Stretch);
    for (const int column : {kEyeColumn, kLockColumn}) {
        header()->setSectionResizeMode(column, QHeaderView::Fixed);
        header()->resizeSection(column, kSignWidth);
    }
    setSelectionMode(ExtendedSelection);
    setDragDropMode(InternalMove);
    setEditTriggers(EditKeyPressed);
    setUniformRowHeights(true);
    setIndentation(16);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &ObjectTreeWidget::TakeSelection);
    connect(this, &QTreeWidget::itemChanged, this, &ObjectTreeWidget::TakeName);
    connect(this, &QTreeWidget::itemDoubleClicked, this, &ObjectTreeWidget::FocusRequested);
}

engine::SceneObject* ObjectTreeWidget::ObjectOf(const QTreeWidgetItem* item) const {
    return item != nullptr ? host.level.FindObject(item->data(0, kIdRole).toInt()) : nullptr;
}

QTreeWidgetItem* ObjectTreeWidget::ItemOf(const EditorObject* object) const {
    const auto found = object != nullptr ? items.find(object->id) : items.end();
    return found != items.end() ? found->second : nullptr;
}

bool ObjectTreeWidget::IsInTree(const engine::SceneObject& object) const {
    return showsHelpers || IsListed(object);
}

void ObjectTreeWidget::ShowHelpers(bool shown) {
    showsHelpers = shown;
    Rebuild();
}

QTreeWidgetItem* ObjectTreeWidget::AddItem(engine::SceneObject& object, QTreeWidgetItem* above) {
    auto* item = above != nullptr ? new QTreeWidgetItem(above) : new QTreeWidgetItem(this);
    item->setText(0, QString::fromStdString(object.name));
    item->setIcon(0, MakeIcon(IconOf(object)));
    item->setData(0, kIdRole, object.id);
    item->setToolTip(0, ClassText(object) + QString(" (%1)").arg(object.id));
    items[object.id] = item;
    if (!IsListed(object)) { // its plug-in's own: neither name nor place in the tree is the user's
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setForeground(0, QColor::fromRgb(Color::kMuted));
        return item;
    }
    item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled);
    ShowSigns(*item, {&object});
    for (EditorObject* child = object.firstChild; child != nullptr; child = child->nextSibling) {
        auto& scene = static_cast<engine::SceneObject&>(*child);
        if (IsInTree(scene)) {
            AddItem(scene, item);
        }
    }
    return item;
}

void ObjectTreeWidget::ShowSigns(QTreeWidgetItem& item, const std::vector<engine::SceneObject*>& objects) {
    item.setIcon(kEyeColumn, MakeIcon(IsAnyVisible(objects) ? IconId::Eye : IconId::EyeShut));
    item.setToolTip(kEyeColumn, tr("Shown or hidden"));
    item.setIcon(kLockColumn, AreAllLocked(objects) ? MakeIcon(IconId::Lock) : QIcon());
    item.setToolTip(kLockColumn, tr("Locked: clicks in the views pass over it"));
    if (!IsAnyVisible(objects)) {
        item.setForeground(0, QColor::fromRgb(Color::kMuted));
    }
}

void ObjectTreeWidget::Rebuild() {
    updating = true;
    std::unordered_map<int, bool> closed;
    for (const auto& [id, item] : items) {
        closed[id] = item->childCount() > 0 && !item->isExpanded();
    }
    const QTreeWidgetItem* first = itemAt(0, 0);
    const int firstId = first != nullptr ? first->data(0, kIdRole).toInt() : 0;
    clear();
    items.clear();
    if (const engine::LevelData* levelData = host.level.Data()) {
        std::unordered_map<const EditorObject*, const engine::Group*> groups;
        for (const auto& group : levelData->Groups()) {
            for (const engine::SceneObject* member : group->members) {
                groups[member] = group.get();
            }
        }
        for (const auto& object : levelData->Objects()) {
            if (object->parent == nullptr && IsInTree(*object)) {
                const auto group = groups.find(object.get());
                AddItem(*object, group != groups.end() ? AddGroup(*group->second) : nullptr);
            }
        }
        for (const auto& group : levelData->Groups()) {
            AddGroup(*group); // all of its objects hang on others
        }
    }
    for (const auto& [id, item] : items) {
        const auto was = closed.find(id);
        item->setExpanded(was == closed.end() || !was->second);
    }
    ApplyFilter();
    updating = false;
    ShowSelection();
    if (items.count(firstId) != 0) {
        scrollToItem(items[firstId], PositionAtTop);
    }
    const engine::Group* group = commands.SelectedGroup();
    QTreeWidgetItem* row = group != nullptr ? ItemOf(*group) : nullptr;
    if (row != nullptr && !closed.contains(row->data(0, kIdRole).toInt())) {
        scrollToItem(row); // just made
    }
}

void ObjectTreeWidget::ShowSelection() {
    if (taking) {
        return;
    }
    updating = true;
    QTreeWidgetItem* last = nullptr;
    std::vector<QModelIndex> chosen;
    for (const EditorObject* object : host.level.selection) {
        if (QTreeWidgetItem* item = ItemOf(object)) {
            chosen.push_back(indexFromItem(item));
            last = item;
        }
    }
    for (const auto& [key, item] : items) {
        const engine::Group* group = key < 0 ? GroupOf(item) : nullptr;
        if (group != nullptr && ChosenRow(group->members.front()) == item) {
            chosen.push_back(indexFromItem(item));
        }
    }
    if (last != nullptr) {
        last = ChosenRow(ObjectOf(last));
    }
    selectionModel()->select(RangesOf(std::move(chosen)),
                             QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (last != nullptr) {
        setCurrentItem(last, 0, QItemSelectionModel::NoUpdate);
        scrollToItem(last);
    }
    updating = false;
}

void ObjectTreeWidget::TakeSelection() {
    if (updating) {
        return;
    }
    // The list is in the middle of a choice of its own: rows of groups go with those of their objects when it
    // is over.
    const QPointer<ObjectTreeWidget> alive(this);
    taking = true;
    host.Select(Chosen());
    if (!alive.isNull()) {
        taking = false;
        QMetaObject::invokeMethod(this, &ObjectTreeWidget::ShowSelection, Qt::QueuedConnection);
    }
}

void ObjectTreeWidget::TakeName(QTreeWidgetItem* item) {
    engine::SceneObject* object = updating ? nullptr : ObjectOf(item);
    engine::Group* group = updating ? nullptr : GroupOf(item);
    if (object == nullptr && group == nullptr) {
        return;
    }
    const std::string name = item->text(0).trimmed().toStdString();
    const bool isTaken =
        object != nullptr ? commands.Rename(*object, name) : commands.RenameGroup(*group, name);
    if (!isTaken) {
        updating = true;
        item->setText(0, QString::fromStdString(object != nullptr ? object->name : group->name));
        updating = false;
    }
}

bool ObjectTreeWidget::EditName(const EditorObject& object) {
    return EditName(ItemOf(&object));
}

bool ObjectTreeWidget::EditName(QTreeWidgetItem* item) {
    if (!isVisible() || item == nullptr || item->isHidden() || (item->flags() & Qt::ItemIsEditable) == 0) {
        return false;
    }
    setFocus();
    scrollToItem(item);
    setCurrentItem(item, kNameColumn, QItemSelectionModel::NoUpdate);
    editItem(item, kNameColumn);
    return true;
}

bool ObjectTreeWidget::PressSign(const QPoint& place) {
    const int column = columnAt(place.x());
    const std::vector<engine::SceneObject*> pressed = ObjectsUnder(itemAt(place));
    if (pressed.empty() || (column != kEyeColumn && column != kLockColumn)) {
        return false;
    }
    const bool areSelected = std::ranges::all_of(
        pressed, [this](engine::SceneObject* object) { return host.level.IsSelected(object); });
    const std::vector<engine::SceneObject*> objects = areSelected ? commands.Selected() : pressed;
    const bool isOn = column == kEyeColumn ? !IsAnyVisible(pressed) : !AreAllLocked(pressed);
    for (engine::SceneObject* object : objects) {
        if (column == kEyeColumn) {
            commands.SetVisible(*object, isOn);
        } else {
            engine::ObjectNotes notes = object->notes;
            notes.locked = isOn;
            commands.SetNotes(*object, notes);
        }
    }
    return true;
}

void ObjectTreeWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !PressSign(event->position().toPoint())) {
        QTreeWidget::mousePressEvent(event);
    }
}

void ObjectTreeWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !PressSign(event->position().toPoint())) {
        QTreeWidget::mouseDoubleClickEvent(event);
    }
}

QTreeWidgetItem* ObjectTreeWidget::TargetAt(const QPoint& place) const {
    QTreeWidgetItem* target = itemAt(place);
    const bool isBetween = dropIndicatorPosition() == AboveItem || dropIndicatorPosition() == BelowItem;
    return isBetween && target != nullptr ? target->parent() : target;
}

engine::SceneObject* ObjectTreeWidget::ParentAt(const QPoint& place) const {
    return ObjectOf(TargetAt(place));
}

void ObjectTreeWidget::TellDrag(const std::string& reason) {
    refusal = reason;
    emit Dragged(!reason.empty()
                     ? QString::fromStdString(reason)
                     : tr("Drop onto an object to hang on it, between rows or below all to hang on none. "
                          "Escape gives up."));
}

void ObjectTreeWidget::startDrag(Qt::DropActions actions) {
    TellDrag({});
    const QPointer<ObjectTreeWidget> alive(this); // the drag runs a loop of its own
    QTreeWidget::startDrag(actions);
    if (alive.isNull()) {
        return;
    }
    emit Dragged({});
    // Where nothing may be dropped the toolkit tells of no drop, only that the drag has left.
    const bool isHere = viewport()->rect().contains(viewport()->mapFromGlobal(QCursor::pos()));
    if (const std::string why = std::exchange(refusal, {}); isHere && !why.empty()) {
        host.windows.Report(why);
    }
}

void ObjectTreeWidget::dragMoveEvent(QDragMoveEvent* event) {
    QTreeWidget::dragMoveEvent(event);
    const QPoint place = event->position().toPoint();
    engine::SceneObject* parent = event->isAccepted() ? ParentAt(place) : ObjectOf(itemAt(place));
    TellDrag(commands.WhyNoParent(commands.Selected(), parent));
    if (const engine::Group* group = refusal.empty() ? GroupAt(place) : nullptr) {
        emit Dragged(
            tr("Drop to add it to the group %1. Escape gives up.").arg(QString::fromStdString(group->name)));
    }
}

void ObjectTreeWidget::dropEvent(QDropEvent* event) {
    engine::SceneObject* parent = ParentAt(event->position().toPoint());
    // The level decides; the tree is built anew from it, whatever the view would have done.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    const std::vector<engine::SceneObject*> dragged = commands.Selected();
    if (dragged.empty()) {
        return;
    }
    if (engine::Group* group = GroupAt(event->position().toPoint())) {
        DropInto(*group);
        return;
    }
    const bool isOne = dragged.size() == 1;
    const std::string what = isOne ? dragged.front()->name : std::to_string(dragged.size()) + " objects";
    const std::string onto = parent != nullptr ? parent->name : "";
    refusal = commands.WhyNoParent(dragged, parent);
    const bool hasLeft =
        refusal.empty() &&
        commands.LeaveGroups(dragged, parent != nullptr ? host.level.Data()->GroupOf(parent) : nullptr) > 0;
    refusal = commands.SetParent(dragged, parent);
    if (!refusal.empty()) {
        host.windows.Report(std::exchange(refusal, {}));
    } else if (parent != nullptr) {
        host.windows.Report(what + " on " + onto);
    } else if (hasLeft) {
        host.windows.Report(what + (isOne ? " is in no group any more" : " are in no group any more"));
    } else {
        host.windows.Report(what + (isOne ? " hangs on nothing" : " hang on nothing"));
    }
}

void ObjectTreeWidget::SetFilter(const QString& text) {
    filter = text.trimmed();
    ApplyFilter();
}

void ObjectTreeWidget::ApplyFilter() {
    for (const auto& [id, item] : items) {
        item->setHidden(!filter.isEmpty());
    }
    for (const auto& [id, item] : items) {
        if (!filter.isEmpty() && item->text(0).contains(filter, Qt::CaseInsensitive)) {
            for (QTreeWidgetItem* above = item; above != nullptr; above = above->parent()) {
                above->setHidden(false);
            }
        }
    }
}

void ObjectTreeWidget::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() == 0) {
        QPainter painter(viewport());
        painter.setPen(QColor::fromRgb(Color::kMuted));
        painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                         tr("The level is empty.\nAdd objects with the Create menu."));
    }
}

ObjectTree::ObjectTree(EditorHost& host, ObjectCommands& commands, QWidget* parent) : QWidget(parent) {
    tree = new ObjectTreeWidget(host, commands, this);
    search = new QLineEdit(this);
    search->setPlaceholderText(tr("Search objects"));
    search->setClearButtonEnabled(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->setSpacing(6);
    layout->addWidget(search);
    layout->addWidget(tree);
    connect(search, &QLineEdit::textChanged, tree, &ObjectTreeWidget::SetFilter);
}

} // namespace stage
