// Run-time classes of the host, shared by the plant platform.
//
// A class takes part by TLRX_CLASS(Class) in its body and TLRX_DEFINE(Class, Base) or TLRX_DEFINE_ROOT(Class) in one
// source file, bases first. Class records live as long as the library and are compared by address.
#pragma once

class TlRxClass {
public:
    static constexpr int maxDepth = 8;

    constexpr explicit TlRxClass(const char* name) : name_(name) { ancestors_[0] = this; }
    constexpr TlRxClass(const char* name, const TlRxClass& base) : name_(name), depth_(base.depth_ + 1) {
        for (int i = 0; i < depth_; ++i) {
            ancestors_[i] = base.ancestors_[i];
        }
        ancestors_[depth_] = this;
    }
    TlRxClass(const TlRxClass&) = delete;
    TlRxClass& operator=(const TlRxClass&) = delete;

    // The class's name as text; exports use it as data.
    constexpr const char* name() const { return name_; }
    constexpr const TlRxClass* parent() const { return depth_ == 0 ? nullptr : ancestors_[depth_ - 1]; }
    // True for the class itself and every class below it.
    constexpr bool isDerivedFrom(const TlRxClass* base) const {
        return base->depth_ <= depth_ && ancestors_[base->depth_] == base;
    }

private:
    const char* name_;
    int depth_ = 0;
    const TlRxClass* ancestors_[maxDepth] = {};
};

// Root of everything that knows its run-time class. The class is fixed at construction.
class TlRxObject {
public:
    const TlRxClass* isA() const { return class_; }
    bool isKindOf(const TlRxClass* base) const { return class_->isDerivedFrom(base); }

protected:
    explicit TlRxObject(const TlRxClass& runtimeClass) : class_(&runtimeClass) {}
    TlRxObject(const TlRxObject&) = default;
    TlRxObject& operator=(const TlRxObject&) { return *this; }
    ~TlRxObject() = default;

private:
    const TlRxClass* class_;
};

// cast gives null for null and for an object of another class; derived classes pass.
#define TLRX_CLASS(Class)                                                                                              \
public:                                                                                                                \
    static const TlRxClass classRecord;                                                                                \
    static const TlRxClass* desc() {                                                                                   \
        return &classRecord;                                                                                           \
    }                                                                                                                  \
    static Class* cast(TlRxObject* object) {                                                                           \
        return object != nullptr && object->isKindOf(&classRecord) ? static_cast<Class*>(object) : nullptr;            \
    }                                                                                                                  \
    static const Class* cast(const TlRxObject* object) {                                                               \
        return object != nullptr && object->isKindOf(&classRecord) ? static_cast<const Class*>(object) : nullptr;      \
    }

#define TLRX_DEFINE_ROOT(Class)                                                                                        \
    constexpr TlRxClass Class::classRecord {                                                                           \
#Class                                                                                                         \
    }
#define TLRX_DEFINE(Class, Base)                                                                                       \
    constexpr TlRxClass Class::classRecord {                                                                           \
#Class, Base::classRecord                                                                                      \
    }
