#pragma once

#include <cstdint>

class CToolBarReg;
class FilmSession;

/// The buttons of the plug-in's toolbar in the host, by local command numbers.
class CommandBar {
public:
    /// The toolbar is the plug-in object's `toolbar`.
    CommandBar(const FilmSession& openSession, CToolBarReg& toolbar) : session(openSession), bar(toolbar) {}
    CommandBar(const CommandBar&) = delete;
    CommandBar& operator=(const CommandBar&) = delete;

    /// Adds the toolbar to the host.
    void Load();
    void SetCheck(std::uint32_t localCommand, bool checked);
    /// From first to last, both included.
    void EnableRange(std::uint32_t first, std::uint32_t last, bool enabled);

private:
    const FilmSession& session;
    CToolBarReg& bar;
};
