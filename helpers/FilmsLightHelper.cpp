#include "helpers/FilmsLightHelper.h"

void CFilmsLightHelper::Save(fs::file& file) const {
    const std::uint8_t sun = isSun ? 1 : 0;
    file.Write(&lightKind, sizeof(lightKind));
    file.Write(&sun, sizeof(sun));
    if (object != nullptr) {
        object->Save(file);
    }
}

void CFilmsLightHelper::Load(fs::file& file, EditorObject* reader, std::uint32_t size) {
    if (reader == nullptr || size < kHeaderBytes) {
        return;
    }
    std::uint8_t sun = 0;
    file.Read(&lightKind, sizeof(lightKind));
    file.Read(&sun, sizeof(sun));
    isSun = sun != 0;
    object = reader->LoadObject(file, size - kHeaderBytes, ClassId::EditorObject, reader);
}
