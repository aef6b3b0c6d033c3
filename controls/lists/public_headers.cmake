# Public headers of the lists (see controls/CMakeLists.txt). ListRecords.h holds the row and
# column records the list classes expose.
zel_controls_public_headers(CListData.h CZELList.h ListRecords.h)
