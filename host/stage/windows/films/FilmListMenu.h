#pragma once

#include <functional>
#include <QAction>
#include <QList>
#include <QObject>
#include <QPointer>

class QAbstractItemView;

namespace stage {

/// A menu over the list of films in the plug-in's panel, which has none of its own. Owned by the list.
class FilmListMenu : public QObject {
    Q_OBJECT
public:
    /// `choose` opens the film of a line of the list; the actions work on the film that is open, a null among
    /// them is a line between.
    FilmListMenu(QAbstractItemView& filmList, std::function<void(int)> choose,
                 const QList<QAction*>& actions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Show(const QPoint& inViewport);

    QAbstractItemView& list;
    std::function<void(int)> chooseLine;
    QList<QPointer<QAction>> entries;
};

} // namespace stage
