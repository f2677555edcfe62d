#pragma once

/// Matrices are 16 floats, row-major, used with row vectors: row 0 is the right axis, row 1 up, row 2
/// forward, row 3 the translation. Angles are degrees. Arithmetic is double inside, float32 outside.

void SetIdentity(float* matrix);

/// Looks along `direction`. Rows become NaN when `direction` is null or parallel to `up`.
void SetLookAt(float* matrix, const float* position, const float* direction, const float* up);

/// Multiplies the three axes by a factor; the translation and the fourth column stay.
void ScaleRows(float* matrix, float factor);

/// Splits a matrix; each result of 3 floats may be null. A mirrored matrix gives three negative scales.
void DecomposeMatrix(const float* matrix, float* position, float* angles, float* scale);

/// The same, but the angles given choose among equal rotations: each moves from its old value by a small
/// step, so that recorded keys don't flip by 360 degrees.
void DecomposeMatrixNear(const float* matrix, float* position, float* angles, float* scale);
