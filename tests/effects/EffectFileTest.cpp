#include "host/stage/effects/EffectFile.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <QByteArray>
#include <sys/stat.h>

namespace {

using stage::EffectColor;
using stage::EffectFile;
using stage::EffectKind;

/// What is told about a text that is refused; empty if it is taken.
std::string Refusal(EffectKind kind, const QByteArray& text) {
    try {
        EffectFile::Parse(kind, text, "x.fx.json");
        return "";
    } catch (const stage::EffectFileError& error) {
        return error.what();
    }
}

template <class Looks> Looks Read(EffectKind kind, const QByteArray& text) {
    return std::get<Looks>(EffectFile::Parse(kind, text, "x.fx.json").looks);
}

TEST(EffectFileTest, ReadsAllFieldsOfAParticleEffect) {
    const auto looks = Read<stage::ParticleEffect>(
        EffectKind::Particle,
        R"({"kind":"particle","about":"A fire","rate":12,"life":2.5,"variation":0.25,"speed":90,"spread":15,
            "radius":7,"gravity":-30,"sizeBegin":4,"sizeEnd":20,"colorBegin":"#ff8000","colorEnd":"#00000033",
            "blend":"glow"})");
    EXPECT_EQ(looks.rate, 12.0f);
    EXPECT_EQ(looks.life, 2.5f);
    EXPECT_EQ(looks.variation, 0.25f);
    EXPECT_EQ(looks.speed, 90.0f);
    EXPECT_EQ(looks.spread, 15.0f);
    EXPECT_EQ(looks.radius, 7.0f);
    EXPECT_EQ(looks.gravity, -30.0f);
    EXPECT_EQ(looks.sizeBegin, 4.0f);
    EXPECT_EQ(looks.sizeEnd, 20.0f);
    EXPECT_TRUE(looks.glow);
    EXPECT_EQ(looks.colorBegin, (EffectColor{1.0f, 128.0f / 255.0f, 0.0f, 1.0f}));
    EXPECT_EQ(looks.colorEnd, (EffectColor{0.0f, 0.0f, 0.0f, 0.2f}));
}

TEST(EffectFileTest, FieldsThatAreLeftOutHaveTheirDefaults) {
    const auto looks = Read<stage::BlindEffect>(EffectKind::Blind, "{}");
    EXPECT_EQ(looks.color, (EffectColor{0.0f, 0.0f, 0.0f, 1.0f}));
    EXPECT_EQ(looks.fadeIn, 0.5f);
    EXPECT_EQ(looks.fadeOut, 0.5f);
}

TEST(EffectFileTest, ReadsTheFramesOfASequence) {
    const auto looks = Read<stage::SequenceEffect>(
        EffectKind::Sequence,
        R"({"shape":"star","rays":5,"blend":"normal","frames":[{"seconds":0.5,"size":3,"turn":90},{"size":8}]})");
    ASSERT_EQ(looks.frames.size(), 2u);
    EXPECT_EQ(looks.frames[0].seconds, 0.5f);
    EXPECT_EQ(looks.frames[0].size, 3.0f);
    EXPECT_EQ(looks.frames[0].turn, 90.0f);
    EXPECT_EQ(looks.frames[1].size, 8.0f);
    EXPECT_EQ(looks.shape, stage::EffectShape::Star);
    EXPECT_EQ(looks.rays, 5.0f);
    EXPECT_FALSE(looks.glow);
}

TEST(EffectFileTest, EachKindReadsItsOwnFields) {
    EXPECT_EQ(Read<stage::TraceEffect>(EffectKind::Trace, R"({"length":2,"width":3,"step":4})").step, 4.0f);
    EXPECT_EQ(Read<stage::FlareEffect>(EffectKind::Flare, R"({"size":2,"rays":3,"halo":4,"pulse":5})").pulse,
              5.0f);
    EXPECT_EQ(Read<stage::RainEffect>(EffectKind::Rain, R"({"drops":9,"wind":-3,"area":500})").wind, -3.0f);
    EXPECT_EQ(Refusal(EffectKind::Rain, R"({"rate":9})"), "x.fx.json: unknown field \"rate\"");
}

struct Refused {
    EffectKind kind;
    const char* text;
    const char* reason; ///< behind the file's name
};

class EffectFileRefusalTest : public testing::TestWithParam<Refused> {};

TEST_P(EffectFileRefusalTest, TellsTheFieldAndTheReason) {
    EXPECT_EQ(Refusal(GetParam().kind, GetParam().text), std::string("x.fx.json: ") + GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, EffectFileRefusalTest,
    testing::Values(
        Refused{EffectKind::Particle, R"({"gravty":1})", R"(unknown field "gravty")"},
        Refused{EffectKind::Particle, R"({"rate":2001})", "rate: 2001 is not between 0.1 and 2000"},
        Refused{EffectKind::Particle, R"({"rate":-1})", "rate: -1 is not between 0.1 and 2000"},
        Refused{EffectKind::Particle, R"({"speed":1e39})", "speed: 1e+39 is not between 0 and 10000"},
        Refused{EffectKind::Particle, R"({"life":"2"})", "life: not a number"},
        Refused{EffectKind::Particle, R"({"life":null})", "life: not a number"},
        // 2,000 a second for 2 seconds and half as long again are 6,000.
        Refused{EffectKind::Particle, R"({"rate":2000,"life":2,"variation":0.5})",
                "rate: with that life there are more than 5000 particles at a time"},
        Refused{EffectKind::Particle, R"({"blend":"add"})", R"(blend: neither "normal" nor "glow")"},
        Refused{EffectKind::Particle, R"({"colorEnd":"red"})",
                R"(colorEnd: not a colour; write "#rrggbb", or "#rrggbbaa" with its opacity)"},
        Refused{EffectKind::Particle, R"({"colorEnd":"#00000g"})",
                R"(colorEnd: not a colour; write "#rrggbb", or "#rrggbbaa" with its opacity)"},
        Refused{EffectKind::Particle, R"({"about":7})", "about: not a text"},
        Refused{EffectKind::Particle, R"({"kind":"rain"})",
                R"(kind: "rain", but the file is with the effects of kind particle)"},
        Refused{EffectKind::Sequence, R"({"shape":"cube"})", "shape: not one of glow, ring, star, bolt"},
        Refused{EffectKind::Sequence, R"({"frames":[]})", "frames: not a list of 1 to 256 frames"},
        Refused{EffectKind::Sequence, R"({"frames":{}})", "frames: not a list of 1 to 256 frames"},
        Refused{EffectKind::Sequence, R"({"frames":[{},3]})", "frames[1]: not an object"},
        Refused{EffectKind::Sequence, R"({"frames":[{},{"size":-1}]})",
                "frames[1].size: -1 is not between 0 and 10000"},
        Refused{EffectKind::Sequence, R"({"frames":[{"siz":1}]})", R"(frames[0].unknown field "siz")"},
        Refused{EffectKind::Blind, "[1]", "not an object in braces"},
        Refused{EffectKind::Blind, R"({"opacity":1.5})", "opacity: 1.5 is not between 0 and 1"}));

TEST(EffectFileTest, ATextThatIsNoJsonIsRefusedWithThePlace) {
    EXPECT_NE(Refusal(EffectKind::Blind, R"({"opacity":)").find("x.fx.json: byte "), std::string::npos);
    EXPECT_NE(Refusal(EffectKind::Blind, ""), "");
}

TEST(EffectFileTest, HostileTextsAreRefused) {
    EXPECT_NE(Refusal(EffectKind::Blind, QByteArray(100000, '[')), "");
    EXPECT_NE(Refusal(EffectKind::Blind, QByteArray(1000, '\0')), "");
    EXPECT_NE(Refusal(EffectKind::Blind, R"({"opacity":1e999})"), "");
    QByteArray frames = R"({"frames":[{})";
    for (int i = 0; i < 256; ++i) {
        frames += ",{}";
    }
    EXPECT_EQ(Refusal(EffectKind::Sequence, frames + "]}"),
              "x.fx.json: frames: not a list of 1 to 256 frames");
}

TEST(EffectFileTest, OnlyARegularFileOfDecentSizeIsRead) {
    const TempFolder folder;
    const auto told = [&](const std::string& path) -> std::string {
        try {
            EffectFile::Read(EffectKind::Blind, path);
            return "";
        } catch (const stage::EffectFileError& error) {
            return error.what();
        }
    };
    const std::string path = folder.File("a.fx.json");
    EXPECT_EQ(told(path), path + ": no such file");
    WriteWholeFile(path, R"({"fadeIn":3})");
    EXPECT_EQ(told(path), "");
    WriteWholeFile(path, std::string(300000, ' ') + "{}");
    EXPECT_NE(told(path).find("larger than"), std::string::npos);
    const std::string pipe = folder.File("b.fx.json");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(told(pipe), pipe + ": not a file");
}

TEST(EffectFileTest, KindsHaveTheirCodes) {
    EffectKind kind = EffectKind::Sequence;
    const char* const names[] = {"sequence", "particle", "trace", "flare", "rain", "blind"};
    for (int code = 1; code <= 6; ++code) {
        ASSERT_TRUE(stage::EffectKindOf(code, kind));
        EXPECT_STREQ(stage::EffectKindName(kind), names[code - 1]);
    }
    EXPECT_FALSE(stage::EffectKindOf(0, kind));
    EXPECT_FALSE(stage::EffectKindOf(7, kind));
    EXPECT_FALSE(stage::EffectKindOf(-1, kind));
}

} // namespace
