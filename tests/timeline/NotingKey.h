#pragma once

#include "plugin/contract/FilmManager.h"

#include <string>
#include <vector>

/// A record that notes what is written to it. No track of the engine may take it.
class NotingKey final : public CFilmVectorKey {
public:
    explicit NotingKey(std::vector<std::string>& calls) : log(calls) { flags = KeyFlag::NoDuration; }
    void SetTime(float) override { log.emplace_back("time"); }
    void SetEndTime(float) override { log.emplace_back("end"); }
    void Describe(char*, int) const override {}
    float GetTime() const override { return time; }
    float GetNaturalDuration() const override { return -1.0f; }
    void CopyFrom(const IFilmKey&, int) override {}
    bool Equals(const IFilmKey&, bool) const override { return false; }
    void SetValue(const void*) override { log.emplace_back("value"); }
    void SetInHandle(const void*) override { log.emplace_back("in"); }
    void SetOutHandle(const void*) override { log.emplace_back("out"); }
    void SetInMethod(int) override {}
    void SetOutMethod(int) override {}
    void SetLinkElement(const std::string&) override {}
    void SetLinkObject(EditorObject*) override {}

private:
    std::vector<std::string>& log;
};

/// Makes such records in place of a manager's own factory while it lives.
class NotingFactory final : public IKeyFactory {
public:
    explicit NotingFactory(IFilmManager& filmManager) : manager(filmManager), real(filmManager.keyFactory) {
        manager.keyFactory = this;
    }
    ~NotingFactory() override { manager.keyFactory = real; }
    NotingFactory(const NotingFactory&) = delete;
    NotingFactory& operator=(const NotingFactory&) = delete;
    IFilmKey* CreateKey(int kind) override {
        auto* key = new NotingKey(log);
        key->kind = namesKinds ? kind : KeyKind::None;
        return key;
    }
    void DestroyKey(IFilmKey* key) override { delete key; }

    std::vector<std::string> log;
    bool namesKinds = false; ///< records tell the kind that was asked for; without it no row takes them

private:
    IFilmManager& manager;
    IKeyFactory* const real;
};
