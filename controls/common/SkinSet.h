// A control's skin: a fixed number of bitmap pieces, each owned by the set. Loading a
// piece deletes the one it replaces and the destructor deletes the rest, so no control
// frees a skin bitmap by hand. A piece that fails to load is NULL, which every painter
// skips.
//
// A control names its pieces with an enum whose order is the order of its loader's
// arguments, so the loaders read as one line:
//
//     enum Piece { kNormal, kFocus, kDown, kDisable, kPieces };
//     zelctl::SkinSet m_skin{kPieces};
//     m_skin.LoadFiles({strNormal, strFocus, strDown, strDisable});
//     m_skin.LoadSkinString(strSkin, zelctl::MissingPiece::RepeatFirst);
#pragma once

#include <afxwin.h>

#include <initializer_list>
#include <vector>

namespace zelctl {

// What a skin string with fewer pieces than the set does with the pieces it lacks.
enum class MissingPiece {
    Empty,        // they are left NULL (not drawn)
    RepeatFirst,  // they repeat the first piece (the push buttons: every state falls back to normal)
};

class SkinSet {
public:
    explicit SkinSet(size_t count) : pieces_(count, nullptr) {}
    ~SkinSet() { ReleaseAll(); }
    SkinSet(const SkinSet&) = delete;
    SkinSet& operator=(const SkinSet&) = delete;

    size_t size() const { return pieces_.size(); }
    // NULL for a piece not loaded and for an index outside the set.
    HBITMAP operator[](size_t i) const { return i < pieces_.size() ? pieces_[i] : nullptr; }
    // 0 x 0 for a piece not loaded.
    SIZE Size(size_t i) const;

    // Takes ownership of `bitmap` as piece i, deleting the piece it replaces. An index
    // outside the set deletes `bitmap` instead (nothing leaks).
    void Set(size_t i, HBITMAP bitmap);
    void Release(size_t i) { Set(i, nullptr); }
    void ReleaseAll();
    // Gives piece i up without deleting it (NULL outside the set). For a clean-up whose
    // exact DeleteObject calls are part of the control's behaviour: the control makes
    // them itself, then detaches what it deleted.
    HBITMAP Detach(size_t i);

    // Pieces first, first + 1, ... from image files (an empty path loads nothing).
    void LoadFiles(std::initializer_list<CString> paths, size_t first = 0);
    // The same from resource identifiers (low 16 bits) of `instance` (the current
    // resource handle when NULL).
    void LoadIds(std::initializer_list<UINT> ids, HINSTANCE instance, size_t first = 0);
    // The same from a host's array of `count` identifiers; a NULL array empties the pieces.
    void LoadIds(const UINT* ids, size_t count, HINSTANCE instance, size_t first = 0);
    // The library's skin-list rule: paths each followed by "|", trimmed, text after the
    // last "|" not taken. With no piece nothing is loaded and the old skin stays; else
    // every piece of the set is replaced, the ones the string lacks as `missing` says.
    // Returns the number of pieces the string named.
    int LoadSkinString(const CString& skin, MissingPiece missing);

private:
    std::vector<HBITMAP> pieces_;
};

}  // namespace zelctl
