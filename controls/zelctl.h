// One include for every control of the library.
#pragma once

#include "CSkinWnd.h"
#include "CZELButton.h"
#include "CZELBmpButton.h"
#include "CBmpTextButton.h"
#include "CZELChkBox.h"
#include "CImageRadioBox.h"
#include "CZELScrollbar.h"
#include "CZELSlider.h"
#include "CListData.h"
#include "CZELPlayList.h"
#include "CZELTelList.h"
#include "CZELBTList.h"
#include "CDataTimectrl.h"
#include "CTimeData.h"
#include "CZELDate.h"
#include "CZELTimeDate.h"
