#pragma once

namespace stage {

/// From where a view of the user's looks. Top, front and side views are flat: they look along an axis and
/// show everything in its true proportions.
enum class ViewKind { Perspective, Top, Front, Side, Camera };

/// How a view shows bodies.
enum class ViewShading { Lit, Flat, Wireframe };

constexpr bool IsFlat(ViewKind kind) {
    return kind == ViewKind::Top || kind == ViewKind::Front || kind == ViewKind::Side;
}

} // namespace stage
