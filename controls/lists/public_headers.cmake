# Public headers of the list base (see controls/CMakeLists.txt): the lists built on it
# include it, and its records.
zel_controls_public_headers(CListData.h ListRecords.h)
