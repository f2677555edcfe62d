#pragma once

#include "framework/Export.h"

class CObject;

/// Describes a class at run time: its name, its base and how to make an instance. One per class, lives for
/// ever.
struct FILMS_API CRuntimeClass {
    const char* className;
    const CRuntimeClass* base;
    CObject* (*create)();

    /// A new instance owned by the caller; null for a class without dynamic creation.
    CObject* CreateObject() const;
    bool IsDerivedFrom(const CRuntimeClass* other) const;
};

class FILMS_API CObject {
public:
    CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject();

    static const CRuntimeClass* GetThisClass();
    virtual const CRuntimeClass* GetRuntimeClass() const;
    bool IsKindOf(const CRuntimeClass* other) const;
};

#define RUNTIME_CLASS(Class) (Class::GetThisClass())

#define DECLARE_DYNAMIC(Class)                                                                               \
public:                                                                                                      \
    static const CRuntimeClass* GetThisClass();                                                              \
    const CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(Class)                                                                             \
    DECLARE_DYNAMIC(Class)                                                                                   \
    static CObject* CreateObject();

#define FILMS_RUNTIME_CLASS_BODY(Class, Base, Factory)                                                       \
    const CRuntimeClass* Class::GetThisClass() {                                                             \
        static const CRuntimeClass runtimeClass{#Class, Base::GetThisClass(), Factory};                      \
        return &runtimeClass;                                                                                \
    }                                                                                                        \
    const CRuntimeClass* Class::GetRuntimeClass() const {                                                    \
        return Class::GetThisClass();                                                                        \
    }

#define IMPLEMENT_DYNAMIC(Class, Base) FILMS_RUNTIME_CLASS_BODY(Class, Base, nullptr)

#define IMPLEMENT_DYNCREATE(Class, Base)                                                                     \
    FILMS_RUNTIME_CLASS_BODY(Class, Base, &Class::CreateObject)                                              \
    CObject* Class::CreateObject() {                                                                         \
        return new Class; /* NOLINT(bugprone-macro-parentheses): a type */                                   \
    }
