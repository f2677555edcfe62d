#include "host/stage/windows/ThemeColors.h"

#include <algorithm>
#include <cmath>

namespace stage {

namespace {

constexpr ThemeColors kLight{
    .window = 0xffeceef1,
    .text = 0xff20262c,
    .base = 0xffffffff,
    .alternateBase = 0xfff5f7f9,
    .button = 0xfff2f4f6,
    .bar = 0xffe6eaee,
    .title = 0xffdfe4e9,
    .line = 0xffccd3da,
    .menu = 0xfffbfcfd,
    .menuLine = 0xffdde2e7,
    .hover = 0xfff7f9fa,
    .pressed = 0xffd3dde3,
    .chosen = 0xffd2e5ea,
    .hoverLine = 0xffc3cbd3,
    .pictureBar = 0xffe6eaee,
    .pictureHover = 0xfff7f9fa,
    .tip = 0xff2b333b,
    .tipText = 0xfff2f4f6,
    .highlight = 0xff1f7a8c,
    .highlightText = 0xffffffff,
    .accent = 0xff1f7a8c,
    .film = 0xffb8641a,
    .icon = 0xff46505a,
    .muted = 0xff5c6771,
    .danger = 0xffb3413a,
    .link = 0xff1f7a8c,
    .placeholder = 0xff66717b,
    .disabled = 0xff7c868f,
};

constexpr ThemeColors kDark{
    .window = 0xff262b31,
    .text = 0xffe6eaee,
    .base = 0xff1c2025,
    .alternateBase = 0xff22272c,
    .button = 0xff333a42,
    .bar = 0xff2d333a,
    .title = 0xff323941,
    .line = 0xff434c55,
    .menu = 0xff2a3036,
    .menuLine = 0xff434c55,
    .hover = 0xff3b444d,
    .pressed = 0xff1f2a30,
    .chosen = 0xff23505c,
    .hoverLine = 0xff5a656f,
    .pictureBar = 0xffaab4bd,
    .pictureHover = 0xffc6ced6,
    .tip = 0xff11151a,
    .tipText = 0xfff2f4f6,
    .highlight = 0xff1f7a8c,
    .highlightText = 0xffffffff,
    .accent = 0xff4fb3c6,
    .film = 0xffe2a05c,
    .icon = 0xffc6ced6,
    .muted = 0xff9aa6b1,
    .danger = 0xffe5786f,
    .link = 0xff6cc4d6,
    .placeholder = 0xff8b96a0,
    .disabled = 0xff7b8691,
};

const ThemeColors* present = &kLight;

/// Of a channel from 0 to 255.
double Linear(int channel) {
    const double part = channel / 255.0;
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(QRgb color) {
    return 0.2126 * Linear(qRed(color)) + 0.7152 * Linear(qGreen(color)) + 0.0722 * Linear(qBlue(color));
}

} // namespace

const ThemeColors& LightColors() {
    return kLight;
}

const ThemeColors& DarkColors() {
    return kDark;
}

const ThemeColors& PresentColors() {
    return *present;
}

void SetPresentColors(const ThemeColors& colors) {
    present = &colors;
}

double ContrastOf(QRgb one, QRgb other) {
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

} // namespace stage
