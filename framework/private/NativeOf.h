#pragma once

#include "framework/private/NativeWindow.h"

// A widget of the toolkit that is a native window.
template <class QBase> class NativeOf : public QBase, public NativeWindow {
public:
    template <class... Args>
    explicit NativeOf(Args&&... args) : QBase(std::forward<Args>(args)...), NativeWindow(this) {}
    ~NativeOf() override { AnnounceEnd(); }

    bool event(QEvent* e) override { return HandleEvent(e); }
    bool BaseEvent(QEvent* e) override { return QBase::event(e); }
};
