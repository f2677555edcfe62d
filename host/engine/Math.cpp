#include "host/engine/Math.h"

#include <algorithm>
#include <cstring>

namespace engine {

namespace {

/// Cosine of 89.9999 degrees: the least by which the forward axis leaves the x axis. Splitting a matrix takes
/// quotients of such numbers and needs them well above the 1e-6 at which a split gives up, and above what
/// float rows are rounded by.
constexpr float kLeastCosine = 1.7453293e-6f;
/// Below this share of a unit axis, what stands beside the x axis is rounding and tells no angle.
constexpr float kRounding = 2e-7f;

} // namespace

bool IsFinite(const Vector3& a) {
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

Vector3 Normalized(const Vector3& a, const Vector3& fallback) {
    const float length = Length(a);
    if (!(length > 0.0f) || !std::isfinite(length)) {
        return fallback;
    }
    return a * (1.0f / length);
}

Matrix4 MatrixFrom(const float* sixteenFloats) {
    Matrix4 result;
    std::memcpy(result.m, sixteenFloats, sizeof result.m);
    return result;
}

Matrix4 Multiply(const Matrix4& a, const Matrix4& b) {
    Matrix4 result;
    for (int row = 0; row < 4; ++row) {
        const float* left = a.Row(row);
        for (int column = 0; column < 4; ++column) {
            result.m[4 * row + column] = left[0] * b.m[column] + left[1] * b.m[4 + column] +
                                         left[2] * b.m[8 + column] + left[3] * b.m[12 + column];
        }
    }
    return result;
}

bool IsFinite(const Matrix4& matrix) {
    return std::all_of(matrix.m, matrix.m + 16, [](float value) { return std::isfinite(value); });
}

bool Invert(const Matrix4& matrix, Matrix4& out) {
    // Gauss-Jordan with row pivots in double: film matrices may hold large translations and small scales.
    double work[4][8] = {};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            work[row][column] = matrix.m[4 * row + column];
        }
        work[row][4 + row] = 1.0;
    }
    for (int column = 0; column < 4; ++column) {
        int pivot = column;
        for (int row = column + 1; row < 4; ++row) {
            if (std::fabs(work[row][column]) > std::fabs(work[pivot][column])) {
                pivot = row;
            }
        }
        const double divisor = work[pivot][column];
        if (!(std::fabs(divisor) > 1e-30) || !std::isfinite(divisor)) {
            return false;
        }
        std::swap(work[pivot], work[column]);
        for (double& value : work[column]) {
            value /= divisor;
        }
        for (int row = 0; row < 4; ++row) {
            const double factor = work[row][column];
            for (int i = 0; row != column && i < 8; ++i) {
                work[row][i] -= factor * work[column][i];
            }
        }
    }
    Matrix4 result;
    for (int i = 0; i < 16; ++i) {
        const double value = work[i / 4][4 + i % 4];
        if (!(std::fabs(value) < 1e30)) {
            return false;
        }
        result.m[i] = static_cast<float>(value);
    }
    out = result;
    return true;
}

Vector3 TransformPoint(const Vector3& point, const Matrix4& matrix) {
    return TransformDirection(point, matrix) + matrix.Translation();
}

Vector3 TransformDirection(const Vector3& direction, const Matrix4& matrix) {
    return matrix.Axis(0) * direction.x + matrix.Axis(1) * direction.y + matrix.Axis(2) * direction.z;
}

void ComposeRows(const Vector3& degrees, const Vector3& scale, float* matrix) {
    const float sx = std::sin(degrees.x * kRadiansPerDegree);
    const float cx = std::cos(degrees.x * kRadiansPerDegree);
    const float sy = std::sin(degrees.y * kRadiansPerDegree);
    float cy = std::cos(degrees.y * kRadiansPerDegree);
    const float sz = std::sin(degrees.z * kRadiansPerDegree);
    const float cz = std::cos(degrees.z * kRadiansPerDegree);
    if (std::fabs(cy) < kLeastCosine) {
        cy = kLeastCosine;
    }
    matrix[0] = cy * cz * scale.x;
    matrix[1] = (cx * sz + sx * sy * cz) * scale.x;
    matrix[2] = (sx * sz - cx * sy * cz) * scale.x;
    matrix[3] = 0.0f;
    matrix[4] = -cy * sz * scale.y;
    matrix[5] = (cx * cz - sx * sy * sz) * scale.y;
    matrix[6] = (sx * cz + cx * sy * sz) * scale.y;
    matrix[7] = 0.0f;
    matrix[8] = sy * scale.z;
    matrix[9] = -sx * cy * scale.z;
    matrix[10] = cx * cy * scale.z;
    matrix[11] = 0.0f;
}

void ComposeInto(const Vector3& position, const Vector3& degrees, const Vector3& scale, float* matrix) {
    ComposeRows(degrees, scale, matrix);
    matrix[12] = position.x;
    matrix[13] = position.y;
    matrix[14] = position.z;
    matrix[15] = 1.0f;
}

Matrix4 Compose(const Vector3& position, const Vector3& degrees, const Vector3& scale) {
    Matrix4 result;
    ComposeInto(position, degrees, scale, result.m);
    return result;
}

void LeaveGimbal(Matrix4& matrix, const float* firstAngle) {
    const Vector3 forward = matrix.Axis(2);
    const float length = Length(forward);
    const float beside = std::hypot(forward.y, forward.z);
    if (!(beside < 0.99f * kLeastCosine * length) || !IsFinite(matrix)) {
        return;
    }
    float sine = 0.0f; // of the first angle
    float cosine = 1.0f;
    if (beside > kRounding * length) {
        sine = -forward.y / beside;
        cosine = forward.z / beside;
    } else {
        const Vector3 up = matrix.Axis(1);
        const float mirror = Dot(matrix.Axis(0), Cross(up, forward)) < 0.0f ? -1.0f : 1.0f;
        const float angle = firstAngle != nullptr ? *firstAngle * kRadiansPerDegree
                                                  : std::atan2(mirror * up.z, mirror * up.y);
        sine = mirror * std::sin(angle);
        cosine = mirror * std::cos(angle);
    }
    // The small turn about y and z that brings the forward axis there; all axes take it, shear stays.
    const float turnZ = (-sine * kLeastCosine * length - forward.y) / forward.x;
    const float turnY = (forward.z - cosine * kLeastCosine * length) / forward.x;
    for (int row = 0; row < 3; ++row) {
        const Vector3 axis = matrix.Axis(row);
        const Vector3 turned = axis + Cross({0.0f, turnY, turnZ}, axis);
        std::memcpy(matrix.Row(row), turned.Data(), sizeof turned);
    }
}

void Decompose(const Matrix4& matrix, Vector3& position, Vector3& degrees, Vector3& scale) {
    position = matrix.Translation();
    scale = {Length(matrix.Axis(0)), Length(matrix.Axis(1)), Length(matrix.Axis(2))};
    if (Dot(matrix.Axis(0), Cross(matrix.Axis(1), matrix.Axis(2))) < 0.0f) {
        scale = scale * -1.0f;
    }
    const Vector3 r0 = matrix.Axis(0) * (1.0f / (scale.x != 0.0f ? scale.x : 1.0f));
    const Vector3 r1 = matrix.Axis(1) * (1.0f / (scale.y != 0.0f ? scale.y : 1.0f));
    const Vector3 r2 = matrix.Axis(2) * (1.0f / (scale.z != 0.0f ? scale.z : 1.0f));
    const float beside = std::hypot(r2.y, r2.z);
    const float y = std::atan2(r2.x, beside); // exact also near 90 degrees, where the sine tells little
    const bool locked = beside < 0.5f * kLeastCosine;
    const float x = locked ? std::atan2(r1.z, r1.y) : std::atan2(-r2.y, r2.z);
    const float z = locked ? 0.0f : std::atan2(-r1.x, r0.x);
    degrees = Vector3{x, y, z} * (1.0f / kRadiansPerDegree);
}

Matrix4 CameraMatrix(const Vector3& eye, const Vector3& target, float rollDegrees) {
    const Vector3 back = Normalized(eye - target, {0.0f, 0.0f, 1.0f});
    // Looking straight up or down: -z or +z stands in for the missing up direction.
    const Vector3 straight{1.0f, 0.0f, 0.0f};
    const Vector3 side = Normalized(Cross({0.0f, 1.0f, 0.0f}, back), straight);
    const Vector3 up = Cross(back, side);
    const float s = std::sin(rollDegrees * kRadiansPerDegree);
    const float c = std::cos(rollDegrees * kRadiansPerDegree);
    const Vector3 rows[4] = {side * c + up * s, up * c - side * s, back, eye};
    Matrix4 result;
    for (int row = 0; row < 4; ++row) {
        std::memcpy(result.Row(row), rows[row].Data(), sizeof(Vector3));
    }
    return result;
}

Matrix4 Perspective(float fieldOfViewDegrees, float aspect, float nearPlane, float farPlane) {
    const float angle = std::clamp(fieldOfViewDegrees, 0.01f, 179.0f) * kRadiansPerDegree;
    const float scale = 1.0f / std::tan(0.5f * angle);
    Matrix4 result;
    result.m[0] = scale / (aspect > 0.0f ? aspect : 1.0f);
    result.m[5] = scale;
    const float depth = nearPlane - farPlane;
    result.m[10] = depth != 0.0f ? (farPlane + nearPlane) / depth : -1.0f;
    result.m[11] = -1.0f;
    result.m[14] = depth != 0.0f ? 2.0f * farPlane * nearPlane / depth : 0.0f;
    result.m[15] = 0.0f;
    return result;
}

} // namespace engine
