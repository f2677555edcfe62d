#pragma once

#include <QIcon>

namespace stage {

/// Pictures of the editor's own commands and object kinds, drawn as vectors at any size.
enum class IconId {
    New,
    Open,
    Save,
    Select,
    Move,
    Rotate,
    Scale,
    OneView,
    TwoViews,
    FourViews,
    Grid,
    Focus,
    Duplicate,
    Delete,
    Group,
    Mesh,
    Character,
    Light,
    DynamicLight,
    Sun,
    Empty,
    Sound,
    CameraPoint,
    Film,
    Box,
    Plane,
    Sphere,
    Cylinder,
    Cone,
    Capsule,
    Camera,
    Label,
    Eye,
    EyeShut,
    Lock,
    SnapGrid,
    SnapAngle,
    SnapSurface,
    SnapVertex,
    LocalAxes,
    Pivot,
    MoreRight,
    MoreBelow,
    CloseWindow,
    FloatWindow,
};

QIcon MakeIcon(IconId id);

} // namespace stage
