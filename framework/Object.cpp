#include "framework/Object.h"

CObject* CRuntimeClass::CreateObject() const {
    return create ? create() : nullptr;
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* other) const {
    for (const CRuntimeClass* c = this; c; c = c->base) {
        if (c == other) {
            return true;
        }
    }
    return false;
}

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetThisClass() {
    static const CRuntimeClass runtimeClass{"CObject", nullptr, nullptr};
    return &runtimeClass;
}

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return GetThisClass();
}

bool CObject::IsKindOf(const CRuntimeClass* other) const {
    return GetRuntimeClass()->IsDerivedFrom(other);
}
