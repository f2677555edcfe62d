#pragma once

#include "host/engine/Math.h"
#include "host/stage/windows/EntryField.h"

#include <QWidget>
#include <vector>

namespace stage {

/// Nine number fields for world matrices: position in centimetres, rotation in degrees, scale factors. They
/// take units and arithmetic. What differs between the matrices is shown as mixed.
class TransformFields : public QWidget {
    Q_OBJECT
public:
    explicit TransformFields(QWidget* parent);

    /// Shows a matrix. Fields whose numbers make the same matrix already stay as they are, so that the
    /// angles which the user types are not turned into others of the same rotation.
    void Show(const engine::Matrix4& matrix);
    void Show(const std::vector<engine::Matrix4>& matrices);
    /// The matrix of the fields. Only good while one matrix is shown.
    engine::Matrix4 Matrix() const;
    /// A matrix with one number of it set to what the user entered.
    static engine::Matrix4 With(const engine::Matrix4& matrix, int row, int axis, double number);
    EntryField* Field(int row, int axis) const { return fields[row][axis]; }

    static constexpr int kPosition = 0;
    static constexpr int kRotation = 1;
    static constexpr int kScale = 2;

signals:
    /// By the user: which number of the three rows and axes.
    void Changed(int row, int axis, double number);

private:
    Vector3 Row(int row) const;

    EntryField* fields[3][3] = {};
    bool several = false; ///< matrices were shown last
};

} // namespace stage
