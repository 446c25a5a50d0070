// Who may do what with a file, for files that are replaced by new ones.
#pragma once

namespace platform
{
// Gives an open file, which nobody else may use yet, the group, the access rights and the extended attributes of another
// one, and its owner where this user may give files away. False when somebody would gain or lose the file by it.
bool CopyRights(int fdFrom, int fdTo);
} // namespace platform
