zel_controls_public_headers(CZELPlayList.h CZELTelList.h CZELBTList.h CBbgFileList.h CZELListCtrl.h)
