// Identifiers of the demo's dialogs and strings (dialogs.rc2). The skin's bitmap identifiers
// are in the generated resource.h.
#pragma once

#define IDD_CLOCK 200

#define IDC_CLOCK_DATE 1401
#define IDC_CLOCK_CLOCK 1402
#define IDC_CLOCK_DATE_PICKER 1403
#define IDC_CLOCK_TIME_PICKER 1404
#define IDC_CLOCK_TIME_FIELD 1405
#define IDC_CLOCK_FORMAT 1406

#define IDS_CLOCK_DATE 210
#define IDS_CLOCK_RUNNING 211
#define IDS_CLOCK_PICKERS 212
#define IDS_CLOCK_FORMAT 213
