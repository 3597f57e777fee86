// The end of the unwind tables that startup.cpp begins: a length of 0 where the next table would follow. Linked after all
// code; what follows it, the import libraries, has no tables.
extern "C" {
[[gnu::section(".eh_frame"), gnu::used]] extern const unsigned unwindTablesEnd = 0;
}
