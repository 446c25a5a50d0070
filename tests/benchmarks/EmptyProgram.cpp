// A program that loads the libraries that the host does, the module among them, and ends.
#include "host/Library.h"

int main()
{
    return LoadLibraryW(BesideProgram(OLESTR("korihvui.dll")).c_str()) ? 0 : 1;
}
