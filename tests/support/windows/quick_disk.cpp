#include "tests/support/quick_disk.h"

void tarvik::test::keep_temporary_folders_in_memory() {}
