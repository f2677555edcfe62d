#pragma once

#include <list>

class FilmSession;

/// The 3D views that follow the film's camera, by their numbers in the host.
class AttachedViews {
public:
    /// The list is the plug-in object's `attachedViews`.
    AttachedViews(const FilmSession& openSession, std::list<int>& viewNumbers)
        : session(openSession), numbers(viewNumbers) {}
    AttachedViews(const AttachedViews&) = delete;
    AttachedViews& operator=(const AttachedViews&) = delete;

    bool Has(int viewNumber) const;
    void Attach(int viewNumber);
    void Detach(int viewNumber);
    /// Gives the views the camera that the film shows, as it was last posed.
    void CopyCamera() const;

private:
    void UpdateButton() const;

    const FilmSession& session;
    std::list<int>& numbers;
};
