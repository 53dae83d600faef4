#include "toolkit/support/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace Cv {

bool writeFileAtomically(const std::string& utf8Path, std::string_view bytes)
{
    std::string pattern = utf8Path + ".tmp-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int fd = ::mkstemp(name.data());
    if (fd < 0)
        return false;
    ::fchmod(fd, 0644);

    bool ok = true;
    size_t written = 0;
    while (ok && written < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR)
            continue;
        ok = n > 0;
        if (ok)
            written += static_cast<size_t>(n);
    }
    ok = ok && ::fsync(fd) == 0;
    ok = (::close(fd) == 0) && ok;
    ok = ok && ::rename(name.data(), utf8Path.c_str()) == 0;
    if (!ok)
        ::unlink(name.data());
    return ok;
}

std::string readFilePrefix(const std::string& utf8Path, size_t maxBytes)
{
    std::string bytes;
    std::ifstream in(utf8Path, std::ios::binary);
    char chunk[65536];
    while (in && bytes.size() < maxBytes) {
        in.read(chunk, static_cast<std::streamsize>(std::min(sizeof chunk, maxBytes - bytes.size())));
        bytes.append(chunk, static_cast<size_t>(in.gcount()));
    }
    return bytes;
}

} // namespace Cv
