// The temporary-wrapper lifetime shared by windows, DCs and GDI objects.
#include "mfc/handle_maps.h"

#include "zel/mfc/cdc.h"
#include "zel/mfc/cwnd.h"
#include "zel/mfc/gdi_objects.h"

namespace zel::mfc {

int& TempMapLocks() {
    static int locks = 0;
    return locks;
}

void DeleteTempMapsIfUnlocked() {
    if (TempMapLocks() > 0) return;
    CWnd::DeleteTempMap();
    CDC::DeleteTempMap();
    CGdiObject::DeleteTempMap();
}

size_t TemporaryWrapperCount() {
    return WindowMap().TemporaryCount() + DcMap().TemporaryCount() + GdiObjectMap().TemporaryCount();
}

}  // namespace zel::mfc

void AfxLockTempMaps() { ++zel::mfc::TempMapLocks(); }

BOOL AfxUnlockTempMaps(BOOL deleteTemps) {
    int& locks = zel::mfc::TempMapLocks();
    if (locks > 0) --locks;
    if (locks > 0 || !deleteTemps) return FALSE;
    zel::mfc::DeleteTempMapsIfUnlocked();
    return TRUE;
}
