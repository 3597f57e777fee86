// What a run does for one item of the catalogue, named by its key.
#pragma once

#include <string_view>

#include "erase/catalogue.h"

inline void RunItem(std::string_view key) {
  for (const erase::EraseItem& item : erase::Catalogue())
    for (const erase::Cleaner cleaner : {item.cleaner, item.secondCleaner})
      if (item.key == key && cleaner != nullptr) cleaner();
}
