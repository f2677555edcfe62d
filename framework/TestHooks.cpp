#include "framework/TestHooks.h"

TestHooks& Hooks() {
    static TestHooks hooks;
    return hooks;
}

HookScope::HookScope() : saved(Hooks()) {
}

HookScope::~HookScope() {
    Hooks() = saved;
}
