// Whether a person is looking.
#pragma once

// Whether the descriptor of the C run-time leads to a terminal that understands colours; on some systems it does from here on.
bool IsTerminal(int nDescriptor);
