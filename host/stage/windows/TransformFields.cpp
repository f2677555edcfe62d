#include "host/stage/windows/TransformFields.h"

#include "host/stage/windows/EntryField.h"

#include <algorithm>
#include <cmath>
#include <QGridLayout>
#include <QLabel>
#include <utility>

namespace stage {

namespace {
struct RowLook {
    const char* name;
    const char* label;
    double step;
    double limit;
    int decimals;
    NumberKind kind;
};

constexpr RowLook kRows[] = {
    {"Position", QT_TR_NOOP("Position, cm"), 10.0, 10000000.0, 2, NumberKind::Length},
    {"Rotation", QT_TR_NOOP("Rotation"), 5.0, 3600.0, 2, NumberKind::Angle},
    {"Scale", QT_TR_NOOP("Scale"), 0.1, 1000.0, 3, NumberKind::Plain},
};
constexpr const char* kAxes[] = {"X", "Y", "Z"};
constexpr int kFirstOfPlace = 12; ///< number of a matrix

Vector3 Least(const Vector3& a, const Vector3& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}

Vector3 Most(const Vector3& a, const Vector3& b) {
    return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

bool Same(const engine::Matrix4& a, const engine::Matrix4& b) {
    for (int i = 0; i < 16; ++i) {
        // The fields of the place round to two decimals, those of the scale to three.
        const float size = std::abs(b.m[i]);
        const float tolerance = i < kFirstOfPlace ? 0.002f * std::max(1.0f, size) : 0.006f + 1e-5f * size;
        if (!(std::abs(a.m[i] - b.m[i]) <= tolerance)) {
            return false;
        }
    }
    return true;
}
} // namespace

TransformFields::TransformFields(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(4);
    for (int axis = 0; axis < 3; ++axis) {
        auto* head = new QLabel(kAxes[axis], this);
        head->setProperty("role", "hint");
        head->setAlignment(Qt::AlignCenter);
        grid->addWidget(head, 0, axis + 1);
    }
    for (int row = 0; row < 3; ++row) {
        grid->addWidget(new QLabel(tr(kRows[row].label), this), row + 1, 0);
        for (int axis = 0; axis < 3; ++axis) {
            auto* field = new EntryField(this, kRows[row].kind);
            field->setObjectName(QString("%1%2").arg(kRows[row].name, kAxes[axis]));
            field->setRange(-kRows[row].limit, kRows[row].limit);
            field->setDecimals(kRows[row].decimals);
            field->setSingleStep(kRows[row].step);
            field->setButtonSymbols(QAbstractSpinBox::NoButtons);
            field->setMinimumWidth(58);
            field->setAlignment(Qt::AlignRight);
            fields[row][axis] = field;
            grid->addWidget(field, row + 1, axis + 1);
            connect(field, &EntryField::Entered, this,
                    [this, row, axis](double number) { emit Changed(row, axis, number); });
        }
    }
    for (int axis = 1; axis <= 3; ++axis) {
        grid->setColumnStretch(axis, 1);
    }
    Show(engine::Matrix4());
}

Vector3 TransformFields::Row(int row) const {
    return {static_cast<float>(fields[row][0]->value()), static_cast<float>(fields[row][1]->value()),
            static_cast<float>(fields[row][2]->value())};
}

engine::Matrix4 TransformFields::Matrix() const {
    return engine::Compose(Row(kPosition), Row(kRotation), Row(kScale));
}

engine::Matrix4 TransformFields::With(const engine::Matrix4& matrix, int row, int axis, double number) {
    Vector3 rows[3];
    engine::Decompose(matrix, rows[kPosition], rows[kRotation], rows[kScale]);
    float* const parts[3] = {&rows[row].x, &rows[row].y, &rows[row].z};
    *parts[axis] = static_cast<float>(number);
    return engine::Compose(rows[kPosition], rows[kRotation], rows[kScale]);
}

void TransformFields::Show(const engine::Matrix4& matrix) {
    if (!engine::IsFinite(matrix) || (!std::exchange(several, false) && Same(Matrix(), matrix))) {
        return;
    }
    Vector3 rows[3];
    engine::Decompose(matrix, rows[kPosition], rows[kRotation], rows[kScale]);
    for (int row = 0; row < 3; ++row) {
        for (int axis = 0; axis < 3; ++axis) {
            fields[row][axis]->Show(rows[row].Data()[axis]);
        }
    }
}

void TransformFields::Show(const std::vector<engine::Matrix4>& matrices) {
    if (matrices.size() == 1) {
        Show(matrices.front());
        return;
    }
    several = true;
    Vector3 low[3];
    Vector3 high[3];
    bool first = true;
    for (const engine::Matrix4& matrix : matrices) {
        Vector3 rows[3];
        engine::Decompose(matrix, rows[kPosition], rows[kRotation], rows[kScale]);
        for (int row = 0; row < 3; ++row) {
            low[row] = first ? rows[row] : Least(low[row], rows[row]);
            high[row] = first ? rows[row] : Most(high[row], rows[row]);
        }
        first = false;
    }
    for (int row = 0; row < 3; ++row) {
        const double shown = std::pow(10.0, -kRows[row].decimals);
        for (int axis = 0; axis < 3; ++axis) {
            const float least = low[row].Data()[axis];
            const bool same = high[row].Data()[axis] - least < shown;
            same ? fields[row][axis]->Show(least) : fields[row][axis]->ShowMixed();
        }
    }
}

} // namespace stage
