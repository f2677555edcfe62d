#include "host/stage/headless/FrameOutput.h"

#include <cstdio>
#include <filesystem>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>

namespace headless {

namespace {

/// Of 100: files are small enough and written in a third of the time that the best take.
constexpr int kPngQuality = 80;

void SavePng(const std::string& path, const render::RenderImage& image) {
    const QImage picture(reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
                         static_cast<qsizetype>(image.width) * 4, QImage::Format_RGB32);
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) {
        throw OutputError(path + ": " + file.errorString().toStdString());
    }
    QImageWriter writer(&file, "png");
    writer.setQuality(kPngQuality);
    if (!writer.write(picture)) {
        throw OutputError(path + ": " + writer.errorString().toStdString());
    }
    if (!file.commit()) {
        throw OutputError(path + ": " + file.errorString().toStdString());
    }
}

} // namespace

std::string FrameFileName(int frame) {
    char name[32];
    std::snprintf(name, sizeof(name), "frame_%04d.png", frame);
    return name;
}

void FrameOutput::Start(int sound) {
    if (!options.folder.empty()) {
        std::error_code error;
        std::filesystem::create_directories(options.folder, error);
        if (error || !std::filesystem::is_directory(options.folder)) {
            throw OutputError(options.folder + ": the folder can't be made" +
                              (error ? ": " + error.message() : std::string()));
        }
    }
    if (!options.video.empty()) {
        video = std::make_unique<VideoPipe>(options, sound);
    }
}

void FrameOutput::Write(int frame, const render::RenderImage& image) {
    if (!options.folder.empty()) {
        SavePng((std::filesystem::path(options.folder) / FrameFileName(frame)).string(), image);
    }
    if (video != nullptr) {
        video->Write(image);
    }
}

void FrameOutput::Finish() {
    if (video != nullptr) {
        video->Close();
    }
}

} // namespace headless
