#include "platform/files/FilePlace.h"

#include <pwd.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/files/detail/NetworkFileSystems.h"
#include "platform/files/detail/SystemFile.h"

namespace tessalink {

namespace {

constexpr std::size_t cAccountRoom = 16384;

}  // namespace

namespace detail {

bool isNetworkFileSystem(std::uint32_t type) {
    constexpr std::array<std::uint32_t, 17> types = {
        0x00006969,  // NFS
        0x0000517B,  // SMB
        0xFE534D42,  // SMB 2
        0xFF534D42,  // CIFS
        0x01021997,  // 9P
        0x65735546,  // FUSE
        0x5346414F,  // AFS
        0x6B414653,  // AFS of the kernel
        0x73757245,  // Coda
        0x0000564C,  // NCP
        0x00C36400,  // Ceph
        0x0BD00BD0,  // Lustre
        0x47504653,  // GPFS
        0x01161970,  // GFS2
        0x7461636F,  // OCFS2
        0x786F4256,  // folders of the host of a virtual machine
        0xBACBACBC,  // the same
    };
    return std::find(types.begin(), types.end(), type) != types.end();
}

}  // namespace detail

bool isOnNetworkShare(const char* path) {
    struct statfs status = {};
    if (::statfs(path, &status) != 0 && ::statfs(detail::folderOf(path), &status) != 0) {
        return false;
    }
    return detail::isNetworkFileSystem(static_cast<std::uint32_t>(status.f_type));
}

CString accountName() {
    std::vector<char> room(cAccountRoom);
    struct passwd entry = {};
    struct passwd* found = nullptr;
    const uid_t user = ::geteuid();
    if (::getpwuid_r(user, &entry, room.data(), room.size(), &found) == 0 && found != nullptr) {
        return CString(found->pw_name);
    }
    return CString(std::string_view(std::to_string(user)));
}

}  // namespace tessalink
