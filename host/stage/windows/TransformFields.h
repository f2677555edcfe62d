#pragma once

#include "host/engine/Math.h"

#include <QWidget>

class QDoubleSpinBox;

namespace stage {

/// Nine number fields for a world matrix: position in centimetres, rotation in degrees, scale factors.
class TransformFields : public QWidget {
    Q_OBJECT
public:
    explicit TransformFields(QWidget* parent);

    /// Shows a matrix. Fields whose numbers make the same matrix already stay as they are, so that the
    /// angles which the user types are not turned into others of the same rotation.
    void Show(const engine::Matrix4& matrix);
    engine::Matrix4 Matrix() const;
    QDoubleSpinBox* Field(int row, int axis) const { return fields[row][axis]; }

    static constexpr int kPosition = 0;
    static constexpr int kRotation = 1;
    static constexpr int kScale = 2;

signals:
    /// By the user.
    void Changed();

private:
    Vector3 Row(int row) const;

    QDoubleSpinBox* fields[3][3] = {};
    bool showing = false;
};

} // namespace stage
