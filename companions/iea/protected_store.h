// The AutoComplete entries that Internet Explorer 4 to 6 keep in the protected store.
#pragma once

namespace iea {

// Deletes the form entries of the AutoComplete type, those of every subtype; entries of other types, the saved passwords
// among the entries of this type (iea_rules.h) and the types themselves stay. Shows nothing, not even where the store would
// ask its user.
//
// True when none is left that could be seen: also in a system without a protected store. False when the store does not
// open or hand out its lists, or when an entry cannot be deleted; the others are deleted all the same.
[[nodiscard]] bool ClearProtectedStore();

}  // namespace iea
