#include "host/stage/render/Shaders.h"

namespace render::Shaders {

const char* const kFramePrelude = R"(
layout(std140) uniform Frame {
    mat4 viewProjection;
    mat4 inverseViewProjection;
    mat4 shadowMatrix;
    vec4 eye;
    vec4 sunDirection;
    vec4 sunColor;
    vec4 zenith;
    vec4 horizon;
    vec4 ground;
    vec4 viewport;
};

vec3 SkyColor(vec3 direction) {
    float up = max(direction.y, 0.0);
    float haze = exp2(-9.0 * up);
    vec3 color = mix(zenith.rgb, horizon.rgb, haze);
    float toSun = max(dot(direction, sunDirection.xyz), 0.0);
    float glow = toSun * toSun;
    glow *= glow;
    float wide = glow * glow;
    return color + sunColor.rgb * (wide * 0.10 + glow * 0.03 * haze);
}

// Filmic curve fitted for linear colours, then a gamma of 2: a root is many times cheaper than a power
// where the processor draws.
vec3 ToneMap(vec3 c) {
    c *= sunColor.w;
    c = clamp((c * (2.51 * c + 0.03)) / (c * (2.43 * c + 0.59) + 0.14), 0.0, 1.0);
    return sqrt(c);
}

// Metres.
float FogShare(float distance) {
    float f = zenith.w * max(distance - 6.0, 0.0);
    return 1.0 - 1.0 / (1.0 + f + 0.5 * f * f);
}
)";

const char* const kMeshVertex = R"(
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec4 color;
layout(location = 3) in vec4 surface;
uniform mat4 model;
uniform mat4 clip;
uniform mat3 normalModel;
uniform vec3 tint;
// Few outputs: each is set up for every triangle.
out vec4 placeAndGlow;
out vec3 worldNormal;
out vec3 albedo;
out vec3 shadowPosition;
#ifdef GLOSSY
out vec3 material;
#endif

void main() {
    placeAndGlow = vec4((model * vec4(position, 1.0)).xyz, surface.b);
    worldNormal = normalModel * normal;
    albedo = color.rgb * tint;
    // Moved along the normal so that a surface does not shade itself; here and not in each pixel.
    float squared = max(dot(worldNormal, worldNormal), 1e-12);
    vec3 lifted = placeAndGlow.xyz + worldNormal * (inversesqrt(squared) * 0.05 * METRE);
    shadowPosition = mat3(shadowMatrix) * lifted + shadowMatrix[3].xyz;
#ifdef GLOSSY
    material = surface.rga;
#endif
    gl_Position = clip * vec4(position, 1.0);
}
)";

const char* const kMeshFragment = R"(
in vec4 placeAndGlow;
in vec3 worldNormal;
in vec3 albedo;
in vec3 shadowPosition;
#ifdef GLOSSY
in vec3 material; // roughness, metallic, ripple
#endif
uniform sampler2DShadow shadowMap;
#if LIGHTS > 0
uniform vec4 lightPosition[LIGHTS]; // w: 1 over the square of the range in metres
uniform vec3 lightColor[LIGHTS];
#endif
out vec4 result;

const float kMetres = 1.0 / METRE; // in a unit

float SunVisible() {
#ifdef FINE
    const float texel = 1.0 / 2048.0;
    float sum = texture(shadowMap, shadowPosition + vec3(-0.9, -0.4, 0.0) * texel);
    sum += texture(shadowMap, shadowPosition + vec3(0.4, -0.9, 0.0) * texel);
    sum += texture(shadowMap, shadowPosition + vec3(0.9, 0.4, 0.0) * texel);
    sum += texture(shadowMap, shadowPosition + vec3(-0.4, 0.9, 0.0) * texel);
    return sum * 0.25;
#else
    return texture(shadowMap, shadowPosition);
#endif
}

#ifdef GLOSSY
// The distance in metres.
vec3 Ripple(vec3 n, float distance) {
    vec2 p = placeAndGlow.xz * kMetres;
    float t = eye.w;
    vec2 slope = 0.050 * cos(dot(p, vec2(0.9, 0.6)) + t * 1.1) * vec2(0.9, 0.6);
    slope += 0.045 * cos(dot(p, vec2(-1.3, 1.9)) + t * 1.7) * vec2(-1.3, 1.9) * 0.6;
    slope += 0.040 * cos(dot(p, vec2(3.1, 2.3)) - t * 2.3) * vec2(3.1, 2.3) * 0.35;
    slope += 0.030 * cos(dot(p, vec2(-4.3, 5.7)) + t * 3.1) * vec2(-4.3, 5.7) * 0.22;
    slope *= material.b / (1.0 + distance * 0.03);
    return normalize(n - vec3(slope.x, 0.0, slope.y));
}
#endif

void main() {
    vec3 toEye = (eye.xyz - placeAndGlow.xyz) * kMetres;
    float squaredDistance = dot(toEye, toEye);
    float nearness = inversesqrt(squaredDistance);
    float distance = squaredDistance * nearness;
    toEye *= nearness;
    vec3 n = normalize(worldNormal);
#ifdef GLOSSY
    n = Ripple(n, distance);
#endif
    float sun = max(dot(n, sunDirection.xyz), 0.0);
    float visible = SunVisible();
    vec3 ambient = mix(ground.rgb, zenith.rgb * 0.45 + horizon.rgb * 0.55, n.y * 0.5 + 0.5);
    vec3 light = ambient + sunColor.rgb * (sun * visible);
#if LIGHTS > 0
    for (int i = 0; i < LIGHTS; ++i) {
        vec3 toLight = (lightPosition[i].xyz - placeAndGlow.xyz) * kMetres;
        float squared = dot(toLight, toLight);
        float fade = max(1.0 - squared * lightPosition[i].w, 0.0);
        float wrap = max(dot(n, toLight) * inversesqrt(squared + 0.0001) * 0.8 + 0.2, 0.0);
        light += lightColor[i] * (wrap * fade * fade / (0.35 + squared * 0.08));
    }
#endif
    vec3 color = albedo * (light + placeAndGlow.w * 1.4);
#ifdef GLOSSY
    float roughness = material.r;
    float metallic = material.g;
    float polish = (1.0 - roughness) * (1.0 - roughness);
    float facing = max(dot(n, toEye), 0.0);
    float fresnel = 1.0 - facing;
    fresnel = fresnel * fresnel * fresnel * fresnel * fresnel;
    vec3 reflectance = mix(vec3(0.04), albedo, metallic);
    vec3 weight = (reflectance + (1.0 - reflectance) * fresnel) * polish;
    vec3 mirror = SkyColor(reflect(-toEye, n)) * mix(0.35, 1.0, visible);
    float shine = exp2(10.0 * (1.0 - roughness) + 1.0);
    vec3 halfway = normalize(toEye + sunDirection.xyz);
    float gloss = pow(max(dot(n, halfway), 0.0), shine) * (shine + 8.0) * 0.04 * polish;
    color = mix(color * (1.0 - metallic * 0.85), mirror, weight);
    color += sunColor.rgb * mix(vec3(1.0), albedo, metallic) * (min(gloss, 12.0) * visible);
#endif
    float toSun = max(-dot(toEye, sunDirection.xyz), 0.0);
    toSun *= toSun;
    toSun *= toSun;
    vec3 fogColor = horizon.rgb + sunColor.rgb * (toSun * toSun * 0.10 + toSun * 0.03);
    result = vec4(ToneMap(mix(color, fogColor, FogShare(distance))), 1.0);
}
)";

const char* const kDepthVertex = R"(
layout(location = 0) in vec3 position;
uniform mat4 clip;

void main() { gl_Position = clip * vec4(position, 1.0); }
)";

const char* const kDepthFragment = "void main() {}\n";

const char* const kMaskFragment = R"(
out vec4 result;

void main() { result = vec4(1.0); }
)";

const char* const kWireFragment = R"(
uniform vec3 color;
out vec4 result;

void main() { result = vec4(color, 1.0); }
)";

const char* const kScreenVertex = R"(
out vec2 place;

void main() {
    place = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
    gl_Position = vec4(place, 1.0, 1.0);
}
)";

const char* const kSkyFragment = R"(
in vec2 place;
out vec4 result;

float Hash(vec2 p) {
    p = fract(p * vec2(0.1031, 0.1030));
    p += dot(p, p.yx + 33.33);
    return fract((p.x + p.y) * p.x);
}

float Noise(vec2 p) {
    vec2 cell = floor(p);
    vec2 f = p - cell;
    f = f * f * (3.0 - 2.0 * f);
    float low = mix(Hash(cell), Hash(cell + vec2(1.0, 0.0)), f.x);
    float high = mix(Hash(cell + vec2(0.0, 1.0)), Hash(cell + vec2(1.0, 1.0)), f.x);
    return mix(low, high, f.y);
}

float Clouds(vec2 p) {
    return Noise(p) * 0.52 + Noise(p * 2.13 + 7.1) * 0.26 + Noise(p * 4.31 + 3.7) * 0.14 + Noise(p * 8.7) * 0.08;
}

// The whole sky, at a fraction of the picture's size.
void main() {
    vec4 far = inverseViewProjection * vec4(place, 1.0, 1.0);
    vec3 direction = normalize(far.xyz / far.w - eye.xyz);
    vec3 color = SkyColor(direction);
    float toSun = max(dot(direction, sunDirection.xyz), 0.0);
    float disc = clamp((toSun - 0.9992) * 2500.0, 0.0, 1.0);
    float halo = max(toSun - 0.985, 0.0) * (1.0 / 0.015);
    halo *= halo;
    color += sunColor.rgb * (disc * disc * 4.0 + halo * halo * 0.4);
    float height = max(direction.y, 0.015);
    vec2 p = direction.xz / (height + 0.12) * 1.6 + vec2(eye.w * 0.012, eye.w * 0.004);
    float dense = smoothstep(1.0 - horizon.w * 1.05, 1.35 - horizon.w * 1.05, Clouds(p) + 0.28);
    float lit = 1.0 - smoothstep(0.30, 0.75, Clouds(p + sunDirection.xz * 0.22));
    vec3 shade = mix(horizon.rgb * 0.72, sunColor.rgb * 0.42 + horizon.rgb * 0.35, lit);
    color = mix(color, shade, dense * smoothstep(0.015, 0.22, direction.y) * 0.85);
    result = vec4(ToneMap(color), 1.0);
}
)";

const char* const kBackdropFragment = R"(
in vec2 place;
uniform sampler2D sky;
out vec4 result;

void main() { result = texture(sky, place * 0.5 + 0.5); }
)";

const char* const kOutlineFragment = R"(
uniform sampler2D mask;
uniform vec3 color;
uniform float radius;
out vec4 result;

float Mask(vec2 place) { return texture(mask, (gl_FragCoord.xy + place * radius) * viewport.zw).r; }

void main() {
    float around = max(max(Mask(vec2(1.0, 0.0)), Mask(vec2(-1.0, 0.0))), max(Mask(vec2(0.0, 1.0)), Mask(vec2(0.0, -1.0))));
    float corners = max(max(Mask(vec2(0.7, 0.7)), Mask(vec2(-0.7, 0.7))), max(Mask(vec2(0.7, -0.7)), Mask(vec2(-0.7, -0.7))));
    result = vec4(color, max(around, corners) - Mask(vec2(0.0)));
}
)";

const char* const kLineVertex = R"(
layout(location = 0) in vec3 from;
layout(location = 1) in vec3 to;
layout(location = 2) in vec4 color;
layout(location = 3) in float width;
uniform float scale;
out vec4 lineColor;
noperspective out float across;
flat out float halfWidth;

void main() {
    vec4 a = viewProjection * vec4(from, 1.0);
    vec4 b = viewProjection * vec4(to, 1.0);
    // Cut at the near plane, where z = -w, so that both ends can be divided.
    float da = a.z + a.w;
    float db = b.z + b.w;
    if (da < 0.0 && db < 0.0) {
        gl_Position = vec4(0.0, 0.0, 2.0, 1.0);
        return;
    }
    vec4 start = da < 0.0 ? mix(a, b, da / (da - db) + 1e-5) : a;
    vec4 end = db < 0.0 ? mix(b, a, db / (db - da) + 1e-5) : b;
    vec2 along = (end.xy / end.w - start.xy / start.w) * viewport.xy;
    float length_ = length(along);
    vec2 direction = length_ > 1e-6 ? along / length_ : vec2(1.0, 0.0);
    bool atEnd = gl_VertexID == 1 || gl_VertexID == 2 || gl_VertexID == 4;
    float side = gl_VertexID == 2 || gl_VertexID == 4 || gl_VertexID == 5 ? 1.0 : -1.0;
    halfWidth = width * scale * 0.5;
    float reach = halfWidth + 1.0;
    vec4 here = atEnd ? end : start;
    vec2 offset = vec2(-direction.y, direction.x) * side * reach + direction * (atEnd ? 0.5 : -0.5);
    gl_Position = vec4(here.xy + offset * 2.0 * viewport.zw * here.w, here.zw);
    across = side * reach;
    lineColor = color;
}
)";

const char* const kLineFragment = R"(
in vec4 lineColor;
noperspective in float across;
flat in float halfWidth;
out vec4 result;

void main() {
    float cover = clamp(halfWidth + 0.5 - abs(across), 0.0, 1.0);
    result = vec4(lineColor.rgb, lineColor.a * cover);
}
)";

} // namespace render::Shaders
