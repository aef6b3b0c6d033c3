// CList<TYPE, ARG_TYPE> and CMap<KEY, ARG_KEY, VALUE, ARG_VALUE> with the framework's
// interface: POSITION walks, head/tail access, lookups by key.
//
// A POSITION is a node of the collection it came from and stays valid until that node is
// removed. A NULL POSITION given where an element is needed is reported on stderr and
// reads give a default-constructed element; a POSITION from another collection is the
// caller's bug, as in the framework.
#pragma once

#include <cstdio>
#include <map>
#include <utility>

#include "zel/mfc/object.h"

struct __POSITION {};
typedef __POSITION* POSITION;
#define BEFORE_START_POSITION ((POSITION)-1L)

namespace zel::mfc {

// A doubly linked list of values; the node is the POSITION.
template <class T>
class NodeList {
public:
    struct Node {
        Node* prev = nullptr;
        Node* next = nullptr;
        T value{};
    };
    NodeList() = default;
    NodeList(const NodeList&) = delete;
    NodeList& operator=(const NodeList&) = delete;
    ~NodeList() { Clear(); }

    static Node* N(POSITION p) { return reinterpret_cast<Node*>(p); }
    static POSITION P(Node* n) { return reinterpret_cast<POSITION>(n); }

    Node* Insert(Node* before, T value) {  // before == nullptr: at the tail
        Node* n = new Node{nullptr, nullptr, std::move(value)};
        n->next = before;
        n->prev = before ? before->prev : tail;
        (n->prev ? n->prev->next : head) = n;
        (before ? before->prev : tail) = n;
        ++count;
        return n;
    }
    void Remove(Node* n) {
        (n->prev ? n->prev->next : head) = n->next;
        (n->next ? n->next->prev : tail) = n->prev;
        delete n;
        --count;
    }
    void Clear() {
        while (head) Remove(head);
    }

    Node* head = nullptr;
    Node* tail = nullptr;
    INT_PTR count = 0;
};

inline void ReportNullPosition(const char* what) { std::fprintf(stderr, "%s: NULL POSITION\n", what); }

}  // namespace zel::mfc

template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject {
    using List = zel::mfc::NodeList<TYPE>;
    using Node = typename List::Node;

public:
    CList() = default;

    INT_PTR GetCount() const { return list_.count; }
    INT_PTR GetSize() const { return list_.count; }
    BOOL IsEmpty() const { return list_.count == 0; }

    TYPE& GetHead() { return Value(list_.head, "CList::GetHead"); }
    const TYPE& GetHead() const { return Value(list_.head, "CList::GetHead"); }
    TYPE& GetTail() { return Value(list_.tail, "CList::GetTail"); }
    const TYPE& GetTail() const { return Value(list_.tail, "CList::GetTail"); }

    POSITION AddHead(ARG_TYPE value) { return List::P(list_.Insert(list_.head, TYPE(value))); }
    POSITION AddTail(ARG_TYPE value) { return List::P(list_.Insert(nullptr, TYPE(value))); }
    void AddTail(const CList& other) {
        for (Node* n = other.list_.head; n; n = n->next) AddTail(n->value);
    }
    // Removing from an empty list reports it and returns a default element.
    TYPE RemoveHead() { return Take(list_.head, "CList::RemoveHead"); }
    TYPE RemoveTail() { return Take(list_.tail, "CList::RemoveTail"); }
    void RemoveAll() { list_.Clear(); }

    POSITION GetHeadPosition() const { return List::P(list_.head); }
    POSITION GetTailPosition() const { return List::P(list_.tail); }
    TYPE& GetNext(POSITION& pos) { return Step(pos, true); }
    const TYPE& GetNext(POSITION& pos) const { return const_cast<CList*>(this)->Step(pos, true); }
    TYPE& GetPrev(POSITION& pos) { return Step(pos, false); }
    const TYPE& GetPrev(POSITION& pos) const { return const_cast<CList*>(this)->Step(pos, false); }
    TYPE& GetAt(POSITION pos) { return Value(List::N(pos), "CList::GetAt"); }
    const TYPE& GetAt(POSITION pos) const { return Value(List::N(pos), "CList::GetAt"); }
    void SetAt(POSITION pos, ARG_TYPE value) {
        if (pos) List::N(pos)->value = value;
    }
    void RemoveAt(POSITION pos) {
        if (pos) list_.Remove(List::N(pos));
    }
    POSITION InsertBefore(POSITION pos, ARG_TYPE value) {
        return pos ? List::P(list_.Insert(List::N(pos), TYPE(value))) : AddHead(value);
    }
    POSITION InsertAfter(POSITION pos, ARG_TYPE value) {
        return pos ? List::P(list_.Insert(List::N(pos)->next, TYPE(value))) : AddTail(value);
    }
    // The first element equal to value after startAfter (or from the head), or NULL.
    POSITION Find(ARG_TYPE value, POSITION startAfter = nullptr) const {
        for (Node* n = startAfter ? List::N(startAfter)->next : list_.head; n; n = n->next)
            if (n->value == value) return List::P(n);
        return nullptr;
    }
    POSITION FindIndex(INT_PTR index) const {
        if (index < 0 || index >= list_.count) return nullptr;
        Node* n = list_.head;
        while (index-- > 0) n = n->next;
        return List::P(n);
    }

private:
    TYPE& Value(Node* n, const char* what) const {
        if (!n) {
            zel::mfc::ReportNullPosition(what);
            return blank_ = TYPE{};
        }
        return n->value;
    }
    TYPE Take(Node* n, const char* what) {
        if (!n) {
            zel::mfc::ReportNullPosition(what);
            return TYPE{};
        }
        TYPE v = std::move(n->value);
        list_.Remove(n);
        return v;
    }
    TYPE& Step(POSITION& pos, bool forward) {
        Node* n = List::N(pos);
        if (!n) {
            zel::mfc::ReportNullPosition("CList::GetNext/GetPrev");
            return blank_ = TYPE{};
        }
        pos = List::P(forward ? n->next : n->prev);
        return n->value;
    }

    List list_;
    mutable TYPE blank_{};
};

// Keys are ordered with operator< (a walk visits them in key order).
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
    using Entry = std::pair<KEY, VALUE>;
    using List = zel::mfc::NodeList<Entry>;
    using Node = typename List::Node;

public:
    CMap() = default;

    INT_PTR GetCount() const { return list_.count; }
    INT_PTR GetSize() const { return list_.count; }
    BOOL IsEmpty() const { return list_.count == 0; }

    BOOL Lookup(ARG_KEY key, VALUE& value) const {
        auto it = index_.find(KEY(key));
        if (it == index_.end()) return FALSE;
        value = it->second->value.second;
        return TRUE;
    }
    // The value for key, inserted value-initialised when absent.
    VALUE& operator[](ARG_KEY key) {
        auto it = index_.find(KEY(key));
        if (it != index_.end()) return it->second->value.second;
        Node* before = nullptr;
        auto next = index_.upper_bound(KEY(key));
        if (next != index_.end()) before = next->second;
        Node* n = list_.Insert(before, Entry(KEY(key), VALUE{}));
        index_.emplace(KEY(key), n);
        return n->value.second;
    }
    void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }
    BOOL RemoveKey(ARG_KEY key) {
        auto it = index_.find(KEY(key));
        if (it == index_.end()) return FALSE;
        list_.Remove(it->second);
        index_.erase(it);
        return TRUE;
    }
    void RemoveAll() {
        index_.clear();
        list_.Clear();
    }

    POSITION GetStartPosition() const { return list_.count ? BEFORE_START_POSITION : nullptr; }
    void GetNextAssoc(POSITION& pos, KEY& key, VALUE& value) const {
        Node* n = pos == BEFORE_START_POSITION ? list_.head : List::N(pos);
        if (!n) {
            zel::mfc::ReportNullPosition("CMap::GetNextAssoc");
            pos = nullptr;
            return;
        }
        key = n->value.first;
        value = n->value.second;
        pos = List::P(n->next);
    }

private:
    List list_;
    std::map<KEY, Node*> index_;
};
