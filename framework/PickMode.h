#pragma once

#include "framework/Export.h"

#include <functional>
#include <string>

/// A wait for something that the user is to choose in the windows of the host. The host shows of which kind
/// it is, and Escape gives it up. Ends with its object. Several may wait; the one that began last is the
/// present one. Without a host nothing is shown, and Escape works all the same.
class FILMS_API PickMode {
public:
    PickMode() = default;
    ~PickMode();
    PickMode(const PickMode&) = delete;
    PickMode& operator=(const PickMode&) = delete;

    /// What a user does to choose.
    enum class By { Click, Menu };

    /// Becomes the present one. The text says to the user what is waited for. `giveUp` is called behind the
    /// end when the user gives up; it may delete this object.
    void Begin(std::string newText, By newBy, std::function<void()> giveUp);
    /// Without a call of `giveUp`. Does nothing while it is not on.
    void End();
    bool IsOn() const;
    const std::string& Text() const { return text; }
    By ChosenBy() const { return by; }

    /// Null while nothing waits.
    static const PickMode* Present();
    /// Ends the present one as the user does with Escape. False if nothing waits.
    static bool GiveUp();

private:
    std::string text;
    By by = By::Click;
    std::function<void()> onGiveUp;
};

/// The program around the windows in which the user chooses.
class FILMS_API IPickModeHost {
public:
    virtual ~IPickModeHost() = default;
    /// Another one is present now, or none; null for none. Lives until the next call.
    virtual void ShowPickMode(const PickMode* mode) = 0;
    /// True while Escape ends something of the host's own, as a drag.
    virtual bool NeedsEscape() const = 0;
};

/// Null takes the host away. It must do so before it goes, and is shown the present one at once.
FILMS_API void SetPickModeHost(IPickModeHost* host);
