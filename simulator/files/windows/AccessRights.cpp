#include "simulator/files/AccessRights.h"

#include <vector>

CUniqueFile CreateWithRightsOf(const std::filesystem::path& target, const std::filesystem::path& file)
{
    SECURITY_ATTRIBUTES rights{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
    std::vector<BYTE> descriptor;
    DWORD dwAttributes = GetFileAttributesW(target.c_str());
    if (dwAttributes != INVALID_FILE_ATTRIBUTES)
    {
        // Without the size there are no rights here to be kept: not every file system has them.
        DWORD cbDescriptor = 0;
        GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &cbDescriptor);
        descriptor.resize(cbDescriptor);
        if (cbDescriptor != 0 &&
            !GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), cbDescriptor, &cbDescriptor))
            return {};
        rights.lpSecurityDescriptor = descriptor.empty() ? nullptr : descriptor.data();
    }
    else
    {
        dwAttributes = 0;
    }
    dwAttributes &= FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    return CUniqueFile(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &rights,
                                   CREATE_NEW, dwAttributes != 0 ? dwAttributes : DWORD{FILE_ATTRIBUTE_NORMAL}, nullptr));
}

void BringFolderToDisk(const std::filesystem::path&)
{
}
