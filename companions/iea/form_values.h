// The form entries that Internet Explorer 7 and later keep as values of a registry key of the user.
#pragma once

namespace iea {

// Deletes every value of the key; its subkeys, the key itself and its neighbours stay. True when the key holds no value
// afterwards, also when there is no such key; false when one could not be deleted or the key does not open.
[[nodiscard]] bool ClearFormValues();

}  // namespace iea
