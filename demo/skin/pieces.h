// The piece families of the default skin, one source file each; catalogue.cpp puts them
// in order.
#pragma once

#include <vector>

#include "skin/catalogue.h"

namespace zel::demo {

void AddScreenPieces(std::vector<SkinPiece>& out);  // the whole-screen background
void AddButtonPieces(std::vector<SkinPiece>& out);  // push, shaped and text buttons, check box
void AddBarPieces(std::vector<SkinPiece>& out);     // scroll bar, slider, progress
void AddClockPieces(std::vector<SkinPiece>& out);   // spinner buttons, colour samples, separators

}  // namespace zel::demo
