#include "keys/rules/KeyParamsFile.h"
#include "keys/views/TrackKey.h"
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

void CFilmsMainCtrl::TakeKeyLooks(const KeyKindParamsTable& records) {
    for (std::size_t kind = 0; kind < records.size(); ++kind) {
        const bool visible = keyParams[kind].visible;
        keyParams[kind] = records[kind];
        keyParams[kind].visible = visible;
    }
    for (CTrackCtrl* row : tracks) {
        if (const KeyKindParams* record = GetKeyParams(row->kind)) {
            for (CTrackKey* view : row->keys) {
                view->TakeLook(*record);
            }
        }
    }
    RepaintRows();
}
