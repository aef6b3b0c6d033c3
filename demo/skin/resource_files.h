// The resource script and header that make the generated skin loadable by identifier
// (zel::LoadResourceModule + LoadBitmapW), as a device application's .rc would.
#pragma once

#include <string>
#include <vector>

#include "skin/catalogue.h"

namespace zel::demo {

// resource.h: one "#define IDB_NAME id" per piece, identifiers from kFirstResourceId.
std::string ResourceHeaderText(const std::vector<SkinPiece>& pieces);

// default.rc: includes resource.h and names each bitmap relative to the script's folder,
// in the script's own notation: IDB_NAME BITMAP "skin\\name.bmp"; then includes the
// screens' dialogs and strings (dialogs.rc2, written by hand, which the build puts beside it).
std::string ResourceScriptText(const std::vector<SkinPiece>& pieces);

// default.controls: which control of the demo wears which pieces, for zel-skin (one line
// per control: class, name, resource names in the class's skin-string order).
std::string ControlListText();

}  // namespace zel::demo
