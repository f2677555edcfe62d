#include "host/stage/windows/BodyFields.h"

#include "host/stage/windows/ColorButton.h"
#include "host/stage/windows/EntryField.h"

#include <algorithm>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace stage {

namespace {
constexpr double kDegrees = 57.29577951308232;
constexpr double kLeastAngle = 1.0;
constexpr double kLargestAngle = 170.0;

struct SideLook {
    const char* name;
    const char* label;
};

constexpr SideLook kSides[] = {
    {"ShapeWidth", QT_TR_NOOP("Width")},
    {"ShapeHeight", QT_TR_NOOP("Height")},
    {"ShapeDepth", QT_TR_NOOP("Depth")},
};

float& SideOf(engine::Shape& shape, int axis) {
    return axis == 0 ? shape.size.x : axis == 1 ? shape.size.y : shape.size.z;
}
} // namespace

ShapeFields::ShapeFields(QWidget* parent) : QWidget(parent), color(new ColorButton(this)) {
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    for (int axis = 0; axis < 3; ++axis) {
        auto* side = new EntryField(this, NumberKind::Length);
        side->setObjectName(kSides[axis].name);
        side->setDecimals(1);
        side->setRange(engine::Shape::kLeastSize, engine::Shape::kLargestSize);
        side->setSingleStep(10.0);
        side->setSuffix(tr(" cm"));
        sides[axis] = side;
        form->addRow(tr(kSides[axis].label), side);
        connect(side, &EntryField::Entered, this, &ShapeFields::Entered);
    }
    form->addRow(tr("Colour"), color);
    connect(color, &ColorButton::ColorChosen, this, [this] {
        colorsDiffer = false;
        emit Entered();
    });
}

void ShapeFields::Show(const std::vector<engine::Shape>& shapes) {
    engine::Shape first = shapes.front();
    for (int axis = 0; axis < 3; ++axis) {
        const bool same = std::ranges::all_of(
            shapes, [&](engine::Shape shape) { return SideOf(shape, axis) == SideOf(first, axis); });
        same ? sides[axis]->Show(SideOf(first, axis)) : sides[axis]->ShowMixed();
    }
    const bool hasHeight = std::ranges::any_of(
        shapes, [](const engine::Shape& shape) { return shape.kind != engine::ShapeKind::Plane; });
    sides[1]->setVisible(hasHeight);
    static_cast<QFormLayout*>(layout())->labelForField(sides[1])->setVisible(hasHeight);
    colorsDiffer =
        std::ranges::any_of(shapes, [&](const engine::Shape& shape) { return shape.color != first.color; });
    color->SetColor(QColor::fromRgb(0xff000000u | first.color));
}

engine::Shape ShapeFields::Changed(const engine::Shape& present) const {
    engine::Shape shape = present;
    for (int axis = 0; axis < 3; ++axis) {
        if (!sides[axis]->IsMixed()) {
            SideOf(shape, axis) = static_cast<float>(sides[axis]->value());
        }
    }
    shape.color = colorsDiffer ? present.color : color->color.rgb() & 0xffffffu;
    return shape;
}

CameraFields::CameraFields(QWidget* parent)
    : QWidget(parent), angle(new EntryField(this, NumberKind::Angle)),
      lookThrough(new QPushButton(tr("Look through"), this)) {
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    angle->setObjectName("CameraAngle");
    angle->setDecimals(1);
    angle->setRange(kLeastAngle, kLargestAngle);
    angle->setSuffix(QString(QChar(0x00b0)));
    lookThrough->setObjectName("LookThrough");
    form->addRow(tr("Field of view"), angle);
    form->addRow(QString(), lookThrough);
    connect(angle, &EntryField::Entered, this,
            [this](double degrees) { emit AngleEntered(static_cast<float>(degrees / kDegrees)); });
    connect(lookThrough, &QPushButton::clicked, this, &CameraFields::LookRequested);
}

void CameraFields::Show(const std::vector<engine::ObjectNotes>& notes) {
    const float first = notes.front().Angle();
    const bool same = std::ranges::all_of(
        notes, [first](const engine::ObjectNotes& other) { return other.Angle() == first; });
    same ? angle->Show(first * kDegrees) : angle->ShowMixed();
    lookThrough->setEnabled(notes.size() == 1);
}

LabelField::LabelField(QWidget* parent) : QWidget(parent), text(new QLineEdit(this)) {
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    text->setObjectName("LabelText");
    form->addRow(tr("Text"), text);
    connect(text, &QLineEdit::editingFinished, this, [this] {
        if (text->isModified()) {
            text->setModified(false);
            emit TextEntered(text->text());
        }
    });
}

void LabelField::Show(const std::vector<engine::ObjectNotes>& notes) {
    if (text->hasFocus() && text->isModified()) {
        return;
    }
    const bool same = std::ranges::all_of(
        notes, [&](const engine::ObjectNotes& other) { return other.text == notes.front().text; });
    text->setPlaceholderText(same ? QString() : tr("mixed"));
    text->setText(same ? QString::fromStdString(notes.front().text) : QString());
}

} // namespace stage
