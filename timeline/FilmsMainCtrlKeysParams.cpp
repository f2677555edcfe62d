#include "keys/KeyParamsFile.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

bool CFilmsMainCtrl::LoadKeysParams(const char* path, KeyKindParamsTable* records) {
    return LoadKeyParamsFile(path, records);
}

bool CFilmsMainCtrl::SaveKeysParams(const std::string& path) {
    return SaveKeyParamsFile(path, keyParams);
}

void CFilmsMainCtrl::LoadDefaultKeysParams(KeyKindParamsTable* records) {
    LoadDefaultKeyParams(plugin.editor, records, keyParams);
}

bool CFilmsMainCtrl::ImportKeysParams(const char* path) {
    return LoadKeysParams(path, &keyParams);
}

void CFilmsMainCtrl::Reset() {
    actorPick.End();
    LoadDefaultKeysParams(&keyParams);
}
