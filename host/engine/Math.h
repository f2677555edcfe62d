#pragma once

#include "plugin/contract/Types.h"

#include <cmath>
#include <cstddef>

namespace engine {

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector3 operator-(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector3 operator*(const Vector3& a, float s) {
    return {a.x * s, a.y * s, a.z * s};
}
inline float Dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector3 Cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline float Length(const Vector3& a) {
    return std::sqrt(Dot(a, a));
}
/// The vector at length 1; `fallback` if its length is 0 or not finite.
Vector3 Normalized(const Vector3& a, const Vector3& fallback);
bool IsFinite(const Vector3& a);

/// 4 x 4 floats, row-major, for row vectors: rows are right, up, forward, translation. The floats stand as
/// in a column-major matrix for column vectors.
struct Matrix4 {
    float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    const float* Row(int row) const { return m + std::ptrdiff_t{4} * row; }
    float* Row(int row) { return m + std::ptrdiff_t{4} * row; }
    Vector3 Axis(int row) const { return {Row(row)[0], Row(row)[1], Row(row)[2]}; }
    Vector3 Translation() const { return Axis(3); }
    void SetTranslation(const Vector3& t) {
        m[12] = t.x;
        m[13] = t.y;
        m[14] = t.z;
    }
    bool operator==(const Matrix4&) const = default;
};

/// The same 16 floats.
Matrix4 MatrixFrom(const float* sixteenFloats);
/// First `a`, then `b`: a child's local matrix times its parent's world matrix.
Matrix4 Multiply(const Matrix4& a, const Matrix4& b);
/// False, and `out` untouched, if the matrix has no finite inverse.
bool Invert(const Matrix4& matrix, Matrix4& out);
bool IsFinite(const Matrix4& matrix);
Vector3 TransformPoint(const Vector3& point, const Matrix4& matrix);
Vector3 TransformDirection(const Vector3& direction, const Matrix4& matrix);
/// Translation, rotation in degrees and scale: for column vectors T * Rx * Ry * Rz * S. Where the middle
/// angle is 90 degrees off its zero the other two can't be told apart in the matrix; it is composed 0.0001
/// degrees beside that, so that whoever splits the matrix again finds all three.
Matrix4 Compose(const Vector3& position, const Vector3& degrees, const Vector3& scale);
/// The three rotation rows times the scale, written straight into `matrix`; its last row is left alone.
void ComposeRows(const Vector3& degrees, const Vector3& scale, float* matrix);
/// Compose, written into 16 floats.
void ComposeInto(const Vector3& position, const Vector3& degrees, const Vector3& scale, float* matrix);
/// Turns a matrix that stands where the three angles can't be told apart by 0.0001 degrees, so that they can.
/// Which way the first angle then reads is free: as it nearly reads already, or else as `firstAngle` in
/// degrees, or else so that the third is 0. Other matrices stay as they are.
void LeaveGimbal(Matrix4& matrix, const float* firstAngle = nullptr);
/// Inverts Compose for matrices without shear; `degrees.y` is within -90 to 90.
void Decompose(const Matrix4& matrix, Vector3& position, Vector3& degrees, Vector3& scale);
/// A camera in the world: row 2 points from the target back to the eye. Roll in degrees turns the camera
/// anticlockwise as seen from behind it. An eye on its target looks along -z.
Matrix4 CameraMatrix(const Vector3& eye, const Vector3& target, float rollDegrees);
/// Right-handed perspective with depth -1 to 1. Angle in degrees, vertical.
Matrix4 Perspective(float fieldOfViewDegrees, float aspect, float nearPlane, float farPlane);

constexpr float kRadiansPerDegree = 0.017453292519943295f;

} // namespace engine
