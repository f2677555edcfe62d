#include "helpers/rules/MatrixMath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kRadiansPerDegree = 0.017453292519943295;
/// Below this cosine of the middle angle the other two can't be told apart.
constexpr double kGimbalLimit = 1e-10;
/// The float32 1e-6, widened: below it a quotient of the near split has no direction.
constexpr double kNearLimit = 9.999999974752427e-7;

struct Row {
    double x, y, z;

    friend Row operator-(Row a, Row b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Row operator*(double f, Row a) { return {f * a.x, f * a.y, f * a.z}; }
};

double Dot(Row a, Row b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Row Cross(Row a, Row b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Length(Row a) {
    return std::sqrt(Dot(a, a));
}

Row Unit(Row a) {
    return (1.0 / Length(a)) * a;
}

/// An axis of no length stays null, so that no NaN gets into a key.
Row UnitOrNull(Row a, double length) {
    return length > 0.0 ? (1.0 / length) * a : Row{0.0, 0.0, 0.0};
}

Row Load(const float* values) {
    return {values[0], values[1], values[2]};
}

void Store(Row row, float* values) {
    values[0] = static_cast<float>(row.x);
    values[1] = static_cast<float>(row.y);
    values[2] = static_cast<float>(row.z);
}

struct Axes {
    Row right, up, forward;
};

/// Makes the axes orthogonal and of unit length. The right axis is corrected against the up axis at
/// its full length and is not made unit again: stored keys depend on that order.
Axes SplitScale(const float* matrix, Row& scale) {
    Row r0 = Load(matrix);
    Row r1 = Load(matrix + 4);
    Row r2 = Load(matrix + 8);
    scale.x = Length(r0);
    r0 = UnitOrNull(r0, scale.x);
    r0 = r0 - Dot(r1, r0) * r1;
    scale.y = Length(r1);
    r1 = UnitOrNull(r1, scale.y);
    r2 = r2 - Dot(r2, r0) * r0;
    r2 = r2 - Dot(r2, r1) * r1;
    scale.z = Length(r2);
    r2 = UnitOrNull(r2, scale.z);
    if (Dot(r0, Cross(r1, r2)) < 0.0) {
        scale = -1.0 * scale;
        r0 = -1.0 * r0;
        r1 = -1.0 * r1;
        r2 = -1.0 * r2;
    }
    return {r0, r1, r2};
}

double ClampedAsin(double value) {
    return std::asin(std::clamp(value, -1.0, 1.0));
}

/// Degrees. The signs are opposite to what the formulas give: part of the convention of stored keys.
Row AnglesOf(const Axes& axes) {
    const double y = ClampedAsin(-axes.forward.x);
    double x = 0.0;
    double z = 0.0;
    if (std::cos(y) >= kGimbalLimit) {
        x = std::atan2(axes.forward.y, axes.forward.z);
        z = std::atan2(axes.up.x, axes.right.x);
    } else {
        x = std::atan2(axes.right.y, axes.up.y);
    }
    return -kDegreesPerRadian * Row{x, y, z};
}

/// The quarter at which a vanishing denominator ends is pi/4, not pi/2: recorded keys depend on it.
double NearStep(double numerator, double denominator) {
    if (std::abs(denominator) < kNearLimit) {
        return numerator <= 0.0 ? -kPi / 4.0 : kPi / 4.0;
    }
    return std::atan(numerator / denominator);
}

/// Degrees, next to the given ones.
Row AnglesNear(const Axes& axes, Row given) {
    const Row radians = kRadiansPerDegree * given;
    const Row& r0 = axes.right;
    const Row& r1 = axes.up;
    const Row& r2 = axes.forward;
    const double s = std::sin(radians.x);
    const double c = std::cos(radians.x);
    const double x = radians.x + NearStep(c * r2.y + s * r2.z, s * r2.y - c * r2.z);
    const double w = std::abs(std::cos(x)) <= 0.5 ? -(r2.y / std::sin(x)) : r2.z / std::cos(x);
    const double y = ClampedAsin(std::cos(radians.y) * r2.x - std::sin(radians.y) * w);
    const double s3 = std::sin(radians.z);
    const double c3 = std::cos(radians.z);
    const double z = NearStep(s3 * r0.x + c3 * r1.x, s3 * r1.x - c3 * r0.x);
    return kDegreesPerRadian * Row{x, y + radians.y, z + radians.z};
}

void StoreSplit(const float* matrix, Row scale, float* position, float* scaleOut) {
    if (position != nullptr) {
        std::copy_n(matrix + 12, 3, position);
    }
    if (scaleOut != nullptr) {
        Store(scale, scaleOut);
    }
}

} // namespace

void SetIdentity(float* matrix) {
    for (int i = 0; i < 16; ++i) {
        matrix[i] = i % 5 == 0 ? 1.0f : 0.0f;
    }
}

void SetLookAt(float* matrix, const float* position, const float* direction, const float* up) {
    const Row forward = Unit(Load(direction));
    const Row right = Unit(Cross(Load(up), forward));
    Store(right, matrix);
    Store(Cross(forward, right), matrix + 4);
    Store(forward, matrix + 8);
    std::copy_n(position, 3, matrix + 12);
    matrix[3] = matrix[7] = matrix[11] = 0.0f;
    matrix[15] = 1.0f;
}

void ScaleRows(float* matrix, float factor) {
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            matrix[row * 4 + column] *= factor;
        }
    }
}

void DecomposeMatrix(const float* matrix, float* position, float* angles, float* scale) {
    Row scales{};
    const Axes axes = SplitScale(matrix, scales);
    StoreSplit(matrix, scales, position, scale);
    if (angles != nullptr) {
        Store(AnglesOf(axes), angles);
    }
}

void DecomposeMatrixNear(const float* matrix, float* position, float* angles, float* scale) {
    Row scales{};
    const Axes axes = SplitScale(matrix, scales);
    StoreSplit(matrix, scales, position, scale);
    if (angles != nullptr) {
        Store(AnglesNear(axes, Load(angles)), angles);
    }
}
