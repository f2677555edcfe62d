#include "framework/UserNote.h"

#include <utility>

namespace {

UserNoteSink& Sink() {
    static UserNoteSink sink;
    return sink;
}

} // namespace

void NoteForUser(const std::string& text) {
    if (const UserNoteSink sink = Sink()) { // a copy: the call may end in taking it away
        sink(text);
    }
}

void SetUserNoteSink(UserNoteSink sink) {
    Sink() = std::move(sink);
}
