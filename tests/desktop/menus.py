"""The menu bar and context menus."""

import time

from desktop import check, find


def choose(desktop, letter, *texts):
    """Follows entries of the menu that Alt and the letter open."""
    desktop.key("alt+" + letter)
    for text in texts:
        desktop.click(entry(desktop, text)["rect"])


def choose_at(desktop, place, *texts):
    """Follows entries of the context menu at a place, with a picture of the menu that holds the last."""
    desktop.press(place, button=3)
    for text in texts:
        found = entry(desktop, text)
        if text is texts[-1]:
            desktop.picture("menu_" + text.lower().replace(" ", "_"))
        desktop.click(found["rect"])
    desktop.until("the menu is gone", lambda s: not find(s["menus"], texts[-1]))
    time.sleep(0.3)


def entry(desktop, text):
    """An entry of an open menu that can be chosen."""
    found = desktop.until(f"menu entry '{text}'", lambda s: find(s["menus"], text))
    check(found["enabled"], f"'{text}' can be chosen")
    return found


def texts_of(desktop, letter):
    """What the menu says that Alt and the letter open."""
    desktop.key("alt+" + letter)
    texts = desktop.until("the menu", lambda s: [entry["text"] for entry in s["menus"]])
    desktop.key("Escape")
    desktop.key("Escape")
    return texts
