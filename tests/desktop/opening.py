"""What scripts begin and end with: the sample level and its film, windows and panels that open, the program's end."""

from desktop import check, find
from dialogs import fill, opens
from menus import choose
from timeline import shown_scenario

FILM = "Intro"  # of the sample level
STATUS_BAR = 24  # pixels, at the bottom of Stage's window


def window_rect(desktop):
    """Of Stage, without the window manager's frame."""
    return next(w["rect"] for w in desktop.look()["windows"] if w["title"].endswith("Stage"))


def level_opens(desktop):
    state = desktop.until("the sample level", lambda s: s if len(s.get("objects", {})) > 5 else None)
    check(state["film"] == "", "no film is open at the start")
    desktop.picture("level")


def panel_opens(desktop, film=FILM):
    desktop.click_button("Movies")
    desktop.item(film)
    desktop.picture("panel")


def film_opens(desktop):
    desktop.click_item(FILM)
    desktop.until("the film is open", lambda s: s["film"] == FILM)


def scenario_opens_docked(desktop):
    desktop.click_item(FILM, times=2)
    window = desktop.until("the scenario window", shown_scenario)
    check(not window["floating"], "the scenario window is docked at first")
    view = desktop.look()["views"][0]["rect"]
    check(view[3] >= window["frame"][3], "the view keeps half of the height")
    desktop.picture("scenario")


def film_opens_in_scenario(desktop, name):
    """By a double click in the list of films."""
    desktop.click_item(name, times=2)
    desktop.until("the film is open", lambda s: s["film"] == name and shown_scenario(s))


def film_is_added(desktop):
    """By the panel's own button; the film's name."""
    before = {item["text"] for item in desktop.look()["items"]}
    desktop.click_button("Add")
    return desktop.until("a new film", lambda s: s["film"] if s["film"] and s["film"] not in before else None)


def new_film(desktop):
    panel_opens(desktop)
    film_opens_in_scenario(desktop, film_is_added(desktop))
    desktop.picture("new_film")


def film_is_made(desktop, name):
    """By the menu, which asks for the name and gives it a camera."""
    choose(desktop, "i", "New film...")
    opens(desktop, "New film")
    fill(desktop, "New film", {0: name})
    desktop.key("Return")
    desktop.until("the film is open", lambda s: s["film"] == name and shown_scenario(s))
    desktop.until("the camera is there", lambda s: "Camera 1" in s["status"])


def assets_open(desktop):
    choose(desktop, "v", "Assets")  # it is behind the list of objects: away, and to the front
    choose(desktop, "v", "Assets")
    desktop.until("the panel of assets", lambda s: find(s["items"], "barrel"))


def program_ends(desktop):
    desktop.x("windowactivate", "--sync", desktop.window)
    desktop.key("alt+F4")
    desktop.ends()
