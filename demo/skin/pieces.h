// The piece families of the default skin, one source file each; catalogue.cpp puts them
// in order.
#pragma once

#include <string>
#include <vector>

#include "skin/catalogue.h"

namespace zel::demo {

void AddScreenPieces(std::vector<SkinPiece>& out);  // the whole-screen background
void AddButtonPieces(std::vector<SkinPiece>& out);  // push, shaped and text buttons, check box
void AddBarPieces(std::vector<SkinPiece>& out);     // scroll bar, slider, progress
void AddClockPieces(std::vector<SkinPiece>& out);   // spinner buttons, colour samples, separators
void AddPhonePieces(std::vector<SkinPiece>& out);   // dial keys, number display, labels, a round portrait
void AddComboPieces(std::vector<SkinPiece>& out);   // combo box (after the others: identifiers keep their values)

// The four states of a 78 x 76 push button (button_<name>_<state>) with `glyph` on its face.
void AddPushButtonStates(std::vector<SkinPiece>& out, const std::string& name, void (*glyph)(Painter&, Pt, COLORREF));
void AddListPieces(std::vector<SkinPiece>& out);    // image list rows, marks, badges, panel
void AddSpecialListPieces(std::vector<SkinPiece>& out);  // the special lists: frame, rows, icons, paper, headings

}  // namespace zel::demo
