#pragma once

#include "host/engine/ObjectNotes.h"
#include "host/engine/Shape.h"

#include <QWidget>
#include <vector>

class QLineEdit;
class QPushButton;

namespace stage {

class ColorButton;
class EntryField;

/// Size and colour of a shape.
class ShapeFields : public QWidget {
    Q_OBJECT
public:
    explicit ShapeFields(QWidget* parent);

    /// One at least; what differs is shown as mixed.
    void Show(const std::vector<engine::Shape>& shapes);
    /// The shape with what the fields say; what is mixed stays.
    engine::Shape Changed(const engine::Shape& present) const;

    EntryField* sides[3]; ///< along x, y, z
    ColorButton* color;

signals:
    /// By the user.
    void Entered();

private:
    bool colorsDiffer = false;
};

/// What a camera that stands in the level looks with, and the button to look through it.
class CameraFields : public QWidget {
    Q_OBJECT
public:
    explicit CameraFields(QWidget* parent);

    void Show(const std::vector<engine::ObjectNotes>& notes);

    EntryField* angle; ///< degrees, vertical
    QPushButton* lookThrough;

signals:
    /// By the user; radians.
    void AngleEntered(float angle);
    void LookRequested();
};

/// What a label says.
class LabelField : public QWidget {
    Q_OBJECT
public:
    explicit LabelField(QWidget* parent);

    void Show(const std::vector<engine::ObjectNotes>& notes);

    QLineEdit* text;

signals:
    /// By the user.
    void TextEntered(const QString& text);
};

} // namespace stage
