// Handle -> wrapper maps for windows, DCs and GDI objects.
//
// Permanent entries are wrappers that own their binding (Attach). Temporary wrappers are
// made on demand by FromHandle for handles nobody has bound, and are deleted together at
// the next idle point of the message loop (never while a window procedure is running).
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "zel/win/types.h"

class CWnd;
class CDC;
class CGdiObject;

namespace zel::mfc {

template <class Wrapper>
class HandleMap {
public:
    Wrapper* Permanent(const void* handle) const {
        auto it = permanent_.find(handle);
        return it == permanent_.end() ? nullptr : it->second;
    }
    bool IsPermanent(const void* handle) const { return permanent_.count(handle) != 0; }
    void SetPermanent(const void* handle, Wrapper* wrapper) { permanent_[handle] = wrapper; }
    void RemovePermanent(const void* handle, const Wrapper* wrapper) {
        auto it = permanent_.find(handle);
        if (it != permanent_.end() && it->second == wrapper) permanent_.erase(it);
    }

    // The permanent wrapper if it is a T, else a temporary T made by bind(T*, handle).
    template <class T, class Bind>
    T* Get(const void* handle, Bind bind) {
        if (!handle) return nullptr;
        if (Wrapper* p = Permanent(handle))
            if (T* t = dynamic_cast<T*>(p)) return t;
        auto it = temporary_.find(handle);
        if (it != temporary_.end()) {
            if (T* t = dynamic_cast<T*>(it->second.get())) return t;
            // Someone may still hold the other temporary: keep it until the cleanup.
            retired_.push_back(std::move(it->second));
            temporary_.erase(it);
        }
        auto made = std::make_unique<T>();
        T* raw = made.get();
        bind(raw, handle);
        temporary_.emplace(handle, std::move(made));
        return raw;
    }

    // unbind(Wrapper*) clears the wrapper's handle so its destructor releases nothing.
    template <class Unbind>
    void DeleteTemporaries(Unbind unbind) {
        auto temporary = std::move(temporary_);
        auto retired = std::move(retired_);
        temporary_.clear();
        retired_.clear();
        for (auto& [handle, wrapper] : temporary) unbind(wrapper.get());
        for (auto& wrapper : retired) unbind(wrapper.get());
    }

    size_t TemporaryCount() const { return temporary_.size() + retired_.size(); }

private:
    std::unordered_map<const void*, Wrapper*> permanent_;
    std::unordered_map<const void*, std::unique_ptr<Wrapper>> temporary_;
    std::vector<std::unique_ptr<Wrapper>> retired_;
};

HandleMap<CWnd>& WindowMap();
HandleMap<CDC>& DcMap();
HandleMap<CGdiObject>& GdiObjectMap();

// Lock count of the temporary maps: window procedures and explicit locks defer cleanup.
int& TempMapLocks();
// Deletes every temporary wrapper (windows, DCs, GDI objects) when nothing holds a lock.
void DeleteTempMapsIfUnlocked();
// How many temporary wrappers exist, for tests.
ZEL_API size_t TemporaryWrapperCount();

}  // namespace zel::mfc
