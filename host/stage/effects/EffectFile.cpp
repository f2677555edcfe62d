#include "host/stage/effects/EffectFile.h"

#include "host/outside/OutsideFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace stage {

namespace {

/// The largest shipped file has not 1 KiB.
constexpr std::uint64_t kMaxFileBytes = OutsideFile::kMiB / 4;
constexpr qsizetype kMaxFrames = 256;
constexpr qsizetype kMaxAbout = 200;
/// What a picture of the browser draws without losing frames.
constexpr float kMaxParticles = 5000.0f;

constexpr const char* kKindNames[kEffectKinds] = {"sequence", "particle", "trace", "flare", "rain", "blind"};

/// A number of an effect with its range.
template <class Part> struct NumberField {
    const char* name;
    float Part::*member;
    float least;
    float most;
};
template <class Part> struct ColorField {
    const char* name;
    EffectColor Part::*member;
};

constexpr float kMaxSeconds = 60.0f;
constexpr float kMaxSize = 10000.0f;

constexpr std::array kFrameNumbers = {
    NumberField<EffectFrame>{"seconds", &EffectFrame::seconds, 0.01f, kMaxSeconds},
    NumberField<EffectFrame>{"size", &EffectFrame::size, 0.0f, kMaxSize},
    NumberField<EffectFrame>{"turn", &EffectFrame::turn, -3600.0f, 3600.0f},
};
constexpr std::array kFrameColors = {ColorField<EffectFrame>{"color", &EffectFrame::color}};

constexpr std::array kParticleNumbers = {
    NumberField<ParticleEffect>{"rate", &ParticleEffect::rate, 0.1f, 2000.0f},
    NumberField<ParticleEffect>{"life", &ParticleEffect::life, 0.05f, kMaxSeconds},
    NumberField<ParticleEffect>{"variation", &ParticleEffect::variation, 0.0f, 1.0f},
    NumberField<ParticleEffect>{"speed", &ParticleEffect::speed, 0.0f, 10000.0f},
    NumberField<ParticleEffect>{"spread", &ParticleEffect::spread, 0.0f, 180.0f},
    NumberField<ParticleEffect>{"radius", &ParticleEffect::radius, 0.0f, kMaxSize},
    NumberField<ParticleEffect>{"gravity", &ParticleEffect::gravity, -5000.0f, 5000.0f},
    NumberField<ParticleEffect>{"sizeBegin", &ParticleEffect::sizeBegin, 0.0f, kMaxSize},
    NumberField<ParticleEffect>{"sizeEnd", &ParticleEffect::sizeEnd, 0.0f, kMaxSize},
};
constexpr std::array kParticleColors = {
    ColorField<ParticleEffect>{"colorBegin", &ParticleEffect::colorBegin},
    ColorField<ParticleEffect>{"colorEnd", &ParticleEffect::colorEnd},
};

constexpr std::array kTraceNumbers = {
    NumberField<TraceEffect>{"length", &TraceEffect::length, 0.05f, kMaxSeconds},
    NumberField<TraceEffect>{"width", &TraceEffect::width, 0.1f, 2000.0f},
    NumberField<TraceEffect>{"step", &TraceEffect::step, 0.0f, kMaxSize},
};
constexpr std::array kTraceColors = {
    ColorField<TraceEffect>{"colorBegin", &TraceEffect::colorBegin},
    ColorField<TraceEffect>{"colorEnd", &TraceEffect::colorEnd},
};

constexpr std::array kFlareNumbers = {
    NumberField<FlareEffect>{"size", &FlareEffect::size, 0.0f, kMaxSize},
    NumberField<FlareEffect>{"rays", &FlareEffect::rays, 0.0f, 64.0f},
    NumberField<FlareEffect>{"halo", &FlareEffect::halo, 0.0f, 10.0f},
    NumberField<FlareEffect>{"pulse", &FlareEffect::pulse, 0.0f, 30.0f},
    NumberField<FlareEffect>{"depth", &FlareEffect::depth, 0.0f, 1.0f},
};
constexpr std::array kFlareColors = {ColorField<FlareEffect>{"color", &FlareEffect::color}};

constexpr std::array kRainNumbers = {
    NumberField<RainEffect>{"drops", &RainEffect::drops, 1.0f, kMaxParticles},
    NumberField<RainEffect>{"speed", &RainEffect::speed, 1.0f, 10000.0f},
    NumberField<RainEffect>{"wind", &RainEffect::wind, -5000.0f, 5000.0f},
    NumberField<RainEffect>{"sway", &RainEffect::sway, 0.0f, 1000.0f},
    NumberField<RainEffect>{"size", &RainEffect::size, 0.1f, 500.0f},
    NumberField<RainEffect>{"length", &RainEffect::length, 0.0f, 500.0f},
    NumberField<RainEffect>{"area", &RainEffect::area, 100.0f, 100000.0f},
    NumberField<RainEffect>{"variation", &RainEffect::variation, 0.0f, 1.0f},
};
constexpr std::array kRainColors = {ColorField<RainEffect>{"color", &RainEffect::color}};

constexpr std::array kBlindNumbers = {
    NumberField<BlindEffect>{"opacity", &BlindEffect::opacity, 0.0f, 1.0f},
    NumberField<BlindEffect>{"fadeIn", &BlindEffect::fadeIn, 0.0f, kMaxSeconds},
    NumberField<BlindEffect>{"fadeOut", &BlindEffect::fadeOut, 0.0f, kMaxSeconds},
};
constexpr std::array kBlindColors = {ColorField<BlindEffect>{"color", &BlindEffect::color}};

/// The fields of one JSON object, each taken once. Throws what is wrong without the file's name.
class FieldReader {
public:
    FieldReader(const QJsonObject& jsonObject, std::string beforeName)
        : object(jsonObject), before(std::move(beforeName)) {}

    void Number(const char* name, float& number, float least, float most) {
        const QJsonValue value = Take(name);
        if (value.isUndefined()) {
            return;
        }
        if (!value.isDouble()) {
            Refuse(name, "not a number");
        }
        const double given = value.toDouble();
        // Asked this way round for what is no number at all.
        if (!(given >= double{least} && given <= double{most})) {
            Refuse(name, QString::number(given).toStdString() + " is not between " +
                             QString::number(double{least}).toStdString() + " and " +
                             QString::number(double{most}).toStdString());
        }
        number = std::clamp(static_cast<float>(given), least, most);
    }

    void Color(const char* name, EffectColor& color) {
        const QJsonValue value = Take(name);
        if (!value.isUndefined() && !ReadColor(value.toString(), color)) {
            Refuse(name, "not a colour; write \"#rrggbb\", or \"#rrggbbaa\" with its opacity");
        }
    }

    void Text(const char* name, std::string& text) {
        const QJsonValue value = Take(name);
        if (!value.isUndefined() && !value.isString()) {
            Refuse(name, "not a text");
        }
        text = value.toString().left(kMaxAbout).toStdString();
    }

    /// One of two words; true for the second.
    void Blend(bool& glow) {
        const QJsonValue value = Take("blend");
        if (value.isUndefined()) {
            return;
        }
        const QString word = value.toString();
        if (word != "normal" && word != "glow") {
            Refuse("blend", R"(neither "normal" nor "glow")");
        }
        glow = word == "glow";
    }

    void Shape(EffectShape& shape) {
        const QJsonValue value = Take("shape");
        if (value.isUndefined()) {
            return;
        }
        constexpr std::array kNames = {"glow", "ring", "star", "bolt"};
        const QString word = value.toString();
        const auto found = std::ranges::find_if(kNames, [&](const char* name) { return word == name; });
        if (found == kNames.end()) {
            Refuse("shape", "not one of glow, ring, star, bolt");
        }
        shape = static_cast<EffectShape>(found - kNames.begin());
    }

    template <class Part, class Numbers, class Colors>
    void Fields(Part& part, const Numbers& numbers, const Colors& colors) {
        for (const auto& field : numbers) {
            Number(field.name, part.*field.member, field.least, field.most);
        }
        for (const auto& field : colors) {
            Color(field.name, part.*field.member);
        }
    }

    QJsonValue Take(const char* name) {
        taken.insert(QString::fromLatin1(name));
        return object.value(QLatin1String(name));
    }

    /// A misspelt field would otherwise do nothing, and nobody would learn of it.
    void RefuseTheRest() const {
        for (const QString& name : object.keys()) {
            if (!taken.contains(name)) {
                throw EffectFileError(before + "unknown field \"" + name.left(kMaxAbout).toStdString() + '"');
            }
        }
    }

    [[noreturn]] void Refuse(const char* name, const std::string& reason) const {
        throw EffectFileError(before + name + ": " + reason);
    }

private:
    static bool ReadColor(const QString& text, EffectColor& color) {
        if ((text.size() != 7 && text.size() != 9) || text.front() != '#') {
            return false;
        }
        std::array<float, 4> parts = {0.0f, 0.0f, 0.0f, 1.0f};
        for (qsizetype i = 1; i < text.size(); i += 2) {
            constexpr QLatin1String kDigits("0123456789abcdef");
            const auto high = kDigits.indexOf(text[i].toLower());
            const auto low = kDigits.indexOf(text[i + 1].toLower());
            if (high < 0 || low < 0) {
                return false;
            }
            parts[static_cast<std::size_t>(i / 2)] = static_cast<float>(high * 16 + low) / 255.0f;
        }
        color = {parts[0], parts[1], parts[2], parts[3]};
        return true;
    }

    const QJsonObject& object;
    std::string before; ///< in front of a field's name in errors
    QSet<QString> taken;
};

void ReadLooks(FieldReader& reader, SequenceEffect& effect) {
    reader.Number("rays", effect.rays, 2.0f, 64.0f);
    reader.Shape(effect.shape);
    reader.Blend(effect.glow);
    const QJsonValue value = reader.Take("frames");
    if (value.isUndefined()) {
        return;
    }
    const QJsonArray frames = value.toArray();
    if (frames.isEmpty() || frames.size() > kMaxFrames) {
        reader.Refuse("frames", "not a list of 1 to " + std::to_string(kMaxFrames) + " frames");
    }
    effect.frames.clear();
    for (const auto& entry : frames) {
        const std::string place = "frames[" + std::to_string(effect.frames.size()) + ']';
        if (!entry.isObject()) {
            reader.Refuse(place.c_str(), "not an object");
        }
        const QJsonObject object = entry.toObject();
        FieldReader inner(object, place + '.');
        inner.Fields(effect.frames.emplace_back(), kFrameNumbers, kFrameColors);
        inner.RefuseTheRest();
    }
}

void ReadLooks(FieldReader& reader, ParticleEffect& effect) {
    reader.Fields(effect, kParticleNumbers, kParticleColors);
    reader.Blend(effect.glow);
    if (effect.rate * effect.life * (1.0f + effect.variation) > kMaxParticles) {
        reader.Refuse("rate", "with that life there are more than 5000 particles at a time");
    }
}

void ReadLooks(FieldReader& reader, TraceEffect& effect) {
    reader.Fields(effect, kTraceNumbers, kTraceColors);
    reader.Blend(effect.glow);
}

void ReadLooks(FieldReader& reader, FlareEffect& effect) {
    reader.Fields(effect, kFlareNumbers, kFlareColors);
}

void ReadLooks(FieldReader& reader, RainEffect& effect) {
    reader.Fields(effect, kRainNumbers, kRainColors);
}

void ReadLooks(FieldReader& reader, BlindEffect& effect) {
    reader.Fields(effect, kBlindNumbers, kBlindColors);
}

Effect EmptyEffect(EffectKind kind) {
    Effect effect;
    switch (kind) {
    case EffectKind::Sequence:
        effect.looks = SequenceEffect();
        break;
    case EffectKind::Particle:
        effect.looks = ParticleEffect();
        break;
    case EffectKind::Trace:
        effect.looks = TraceEffect();
        break;
    case EffectKind::Flare:
        effect.looks = FlareEffect();
        break;
    case EffectKind::Rain:
        effect.looks = RainEffect();
        break;
    case EffectKind::Blind:
        effect.looks = BlindEffect();
        break;
    }
    return effect;
}

Effect ParseBytes(EffectKind kind, const QByteArray& bytes) {
    QJsonParseError failed;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &failed);
    if (failed.error != QJsonParseError::NoError) {
        throw EffectFileError("byte " + std::to_string(failed.offset) + ": " +
                              failed.errorString().toStdString());
    }
    if (!document.isObject()) {
        throw EffectFileError("not an object in braces");
    }
    const QJsonObject object = document.object();
    FieldReader reader(object, "");
    std::string named = EffectKindName(kind);
    if (object.contains("kind")) {
        reader.Text("kind", named);
    }
    if (named != EffectKindName(kind)) {
        reader.Refuse("kind",
                      '"' + named + "\", but the file is with the effects of kind " + EffectKindName(kind));
    }
    Effect effect = EmptyEffect(kind);
    reader.Text("about", effect.about);
    std::visit([&](auto& looks) { ReadLooks(reader, looks); }, effect.looks);
    reader.RefuseTheRest();
    return effect;
}

} // namespace

bool EffectKindOf(int code, EffectKind& kind) {
    if (code < 1 || code > kEffectKinds) {
        return false;
    }
    kind = static_cast<EffectKind>(code);
    return true;
}

const char* EffectKindName(EffectKind kind) {
    return kKindNames[static_cast<int>(kind) - 1];
}

Effect EffectFile::Read(EffectKind kind, const std::string& path) {
    OutsideFile file(path, kMaxFileBytes);
    QByteArray bytes;
    if (!file.IsOpen() || !file.ReadAll(bytes)) {
        throw EffectFileError(path + ": " + file.Error());
    }
    return Parse(kind, bytes, path);
}

Effect EffectFile::Parse(EffectKind kind, const QByteArray& bytes, const std::string& name) {
    try {
        return ParseBytes(kind, bytes);
    } catch (const EffectFileError& error) {
        throw EffectFileError(name + ": " + error.what());
    }
}

} // namespace stage
