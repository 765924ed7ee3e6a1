// How names are compared: as the system does it, without regard to case.
#pragma once

bool NamesAreEqual(const char* a, const char* b);
