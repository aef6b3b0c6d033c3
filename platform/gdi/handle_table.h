// A typed handle table with generation counters. A handle is never a pointer: it packs
// type, generation and slot, so a stale, forged or wrong-typed handle resolves to nullptr
// instead of touching freed memory.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace zel::detail {

template <class Base>
class HandleTable {
public:
    // Bits: [0,24) slot + 1, [24,48) generation, [48,56) type tag.
    uintptr_t Add(std::unique_ptr<Base> object, uint8_t type) {
        uint32_t slot;
        if (!free_.empty()) {
            slot = free_.back();
            free_.pop_back();
        } else {
            slot = static_cast<uint32_t>(slots_.size());
            slots_.emplace_back();
        }
        Slot& s = slots_[slot];
        s.object = std::move(object);
        s.type = type;
        ++live_;
        return Encode(slot, s.generation, type);
    }

    // The object behind a handle of the given type (0 = any type), or nullptr.
    Base* Lookup(uintptr_t handle, uint8_t type = 0) const {
        const Slot* s = Find(handle);
        if (!s || (type && s->type != type)) return nullptr;
        return s->object.get();
    }

    uint8_t TypeOf(uintptr_t handle) const {
        const Slot* s = Find(handle);
        return s ? s->type : 0;
    }

    std::unique_ptr<Base> Remove(uintptr_t handle) {
        Slot* s = const_cast<Slot*>(Find(handle));
        if (!s) return nullptr;
        std::unique_ptr<Base> object = std::move(s->object);
        s->generation = (s->generation + 1) & kGenMask;
        if (s->generation == 0) s->generation = 1;
        free_.push_back(static_cast<uint32_t>(s - slots_.data()));
        --live_;
        return object;
    }

    template <class F>
    void ForEach(F&& f) const {
        for (const Slot& s : slots_)
            if (s.object) f(s.type, *s.object);
    }

    size_t live() const { return live_; }

private:
    static constexpr uint32_t kGenMask = 0xFFFFFF;
    struct Slot {
        std::unique_ptr<Base> object;
        uint32_t generation = 1;
        uint8_t type = 0;
    };

    static uintptr_t Encode(uint32_t slot, uint32_t gen, uint8_t type) {
        return (static_cast<uintptr_t>(type) << 48) | (static_cast<uintptr_t>(gen) << 24) | (slot + 1);
    }
    const Slot* Find(uintptr_t handle) const {
        uint32_t slot1 = handle & 0xFFFFFF;
        if (slot1 == 0 || slot1 > slots_.size()) return nullptr;
        const Slot& s = slots_[slot1 - 1];
        if (!s.object || s.generation != ((handle >> 24) & kGenMask) || s.type != ((handle >> 48) & 0xFF))
            return nullptr;
        return &s;
    }

    std::vector<Slot> slots_;
    std::vector<uint32_t> free_;
    size_t live_ = 0;
};

}  // namespace zel::detail
