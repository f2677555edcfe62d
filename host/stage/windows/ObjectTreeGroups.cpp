// Groups in the list of objects.
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ObjectTree.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace stage {

namespace {

int KeyOf(const engine::Group& group) {
    return group.members.empty() ? 0 : -group.members.front()->id;
}

} // namespace

engine::Group* ObjectTreeWidget::GroupOf(const QTreeWidgetItem* item) const {
    const int key = item != nullptr ? item->data(0, kIdRole).toInt() : 0;
    const engine::SceneObject* first = key < 0 ? host.level.FindObject(-key) : nullptr;
    return first != nullptr ? host.level.Data()->GroupOf(first) : nullptr;
}

QTreeWidgetItem* ObjectTreeWidget::ItemOf(const engine::Group& group) const {
    const auto found = items.find(KeyOf(group));
    return found != items.end() ? found->second : nullptr;
}

QTreeWidgetItem* ObjectTreeWidget::AddGroup(const engine::Group& group) {
    if (QTreeWidgetItem* present = ItemOf(group); present != nullptr || group.members.empty()) {
        return present;
    }
    auto* item = new QTreeWidgetItem(this);
    item->setText(0, QString::fromStdString(group.name));
    item->setIcon(0, MakeIcon(IconId::Group));
    item->setData(0, kIdRole, KeyOf(group));
    item->setToolTip(0, tr("Group of %1 objects").arg(group.members.size()));
    item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled);
    items[KeyOf(group)] = item;
    ShowSigns(*item, group.members);
    return item;
}

std::vector<engine::SceneObject*> ObjectTreeWidget::ObjectsUnder(const QTreeWidgetItem* item) const {
    const engine::Group* group = GroupOf(item);
    std::vector<engine::SceneObject*> objects =
        group != nullptr ? group->members : std::vector<engine::SceneObject*>{ObjectOf(item)};
    std::erase_if(objects, [](const auto* object) { return object == nullptr || !IsListed(*object); });
    return objects;
}

ObjectList ObjectTreeWidget::Chosen() const {
    const auto wasWhole = [this](const engine::Group& group) {
        return std::ranges::all_of(group.members,
                                   [this](auto* member) { return host.level.IsSelected(member); });
    };
    const auto chosenRows = [this](const engine::Group& group) {
        return std::ranges::count_if(group.members, [this](const auto* member) {
            const QTreeWidgetItem* row = ItemOf(member);
            return row != nullptr && row->isSelected();
        });
    };
    ObjectList chosen;
    std::unordered_set<const EditorObject*> known;
    const auto add = [&](EditorObject* object) {
        if (known.insert(object).second) {
            chosen.push_back(object);
        }
    };
    for (const QTreeWidgetItem* item : selectedItems()) {
        const engine::Group* group = GroupOf(item);
        // Of a group that was chosen, some of whose rows are still, the others were taken out just now.
        if (group != nullptr && (chosenRows(*group) == 0 || !wasWhole(*group))) {
            for (engine::SceneObject* member : group->members) {
                add(member);
            }
        } else if (engine::SceneObject* object = ObjectOf(item)) {
            add(object);
        }
    }
    for (const auto& [key, item] : items) {
        const engine::Group* group = key < 0 && !item->isSelected() ? GroupOf(item) : nullptr;
        // Its row was taken out, and those of its objects were left.
        if (group != nullptr && group->members.size() > 1 && wasWhole(*group) &&
            chosenRows(*group) == std::ssize(group->members)) {
            chosen.remove_if([&](const EditorObject* object) {
                return std::ranges::find(group->members, object) != group->members.end();
            });
        }
    }
    return chosen;
}

QTreeWidgetItem* ObjectTreeWidget::ChosenRow(const EditorObject* object) const {
    const engine::Group* group = host.level.Data()->GroupOf(static_cast<const engine::SceneObject*>(object));
    const bool isWhole = group != nullptr && std::ranges::all_of(group->members, [this](auto* member) {
                             return host.level.IsSelected(member);
                         });
    return isWhole ? ItemOf(*group) : ItemOf(object);
}

bool ObjectTreeWidget::EditName(const engine::Group& group) {
    return EditName(ItemOf(group));
}

engine::Group* ObjectTreeWidget::GroupAt(const QPoint& place) const {
    return GroupOf(TargetAt(place));
}

void ObjectTreeWidget::DropInto(engine::Group& group) {
    const std::vector<engine::SceneObject*> dragged = commands.Selected();
    refusal = commands.WhyNoParent(dragged, nullptr);
    if (!refusal.empty()) {
        host.windows.Report(std::exchange(refusal, {}));
        return;
    }
    const std::string name = group.name;
    const std::string what =
        dragged.size() == 1 ? dragged.front()->name : std::to_string(dragged.size()) + " objects";
    const bool hasJoined = commands.JoinGroup(dragged, group) > 0;
    commands.SetParent(dragged, nullptr);
    host.windows.Report(hasJoined ? what + " added to " + name : what + " hangs on nothing");
}

} // namespace stage
