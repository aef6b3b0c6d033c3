// What a control or host source includes: the core, GDI wrappers, CDC, CWnd and message
// maps, the standard control classes and the application object.
#pragma once

#include "afx.h"
#include "zel/mfc/gdi_objects.h"
#include "zel/mfc/cdc.h"
#include "zel/mfc/message_map.h"
#include "zel/mfc/cwnd.h"
#include "zel/mfc/cdialog.h"
#include "zel/mfc/cbutton.h"
#include "zel/mfc/cstatic.h"
#include "zel/mfc/cscrollbar.h"
#include "zel/mfc/cwinapp.h"
