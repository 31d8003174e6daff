#include "test_files.h"

#include <grp.h>
#include <pwd.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace quenchly {

void PrintTo(const Text& text, std::ostream* out)
{
    *out << '"' << text.utf8() << '"';
}

namespace testing {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path)
{
    throw std::system_error(errno, std::generic_category(), path.string());
}

void writeBytes(const fs::path& path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        fail(path);
}

}  // namespace

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

ScratchFolder::ScratchFolder()
{
    std::string name = (fs::temp_directory_path() / "quenchly-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        fail(name);
    path_ = fs::canonical(name);
    // An ordinary user must get as far as the files whose permissions are tested.
    fs::permissions(path_, fs::perms(0755));
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ScratchFolder::prepared(const fs::path& relative) const
{
    const fs::path path = path_ / relative;
    fs::create_directories(path.parent_path());
    return path;
}

fs::path ScratchFolder::write(const fs::path& relative, std::string_view bytes) const
{
    const fs::path path = prepared(relative);
    writeBytes(path, bytes);
    return path;
}

fs::path ScratchFolder::replace(const fs::path& relative, std::string_view bytes) const
{
    const fs::path path = prepared(relative);
    fs::path fresh = path;
    fresh += ".new";
    writeBytes(fresh, bytes);
    fs::rename(fresh, path);
    return path;
}

fs::path ScratchFolder::writeSparse(const fs::path& relative, std::string_view bytes, std::uintmax_t size) const
{
    const fs::path path = write(relative, bytes);
    fs::resize_file(path, size);
    return path;
}

fs::path ScratchFolder::makeFolder(const fs::path& relative) const
{
    const fs::path path = prepared(relative);
    fs::create_directories(path);
    return path;
}

fs::path ScratchFolder::makeFifo(const fs::path& relative) const
{
    const fs::path path = prepared(relative);
    if (mkfifo(path.c_str(), 0644) != 0)
        fail(path);
    return path;
}

fs::path ScratchFolder::makeLink(const fs::path& relative, const fs::path& target) const
{
    const fs::path path = prepared(relative);
    fs::create_symlink(target, path);
    return path;
}

OrdinaryUser::OrdinaryUser() : before_(geteuid())
{
    if (before_ != 0)
        return;
    if (const passwd* nobody = getpwnam("nobody"))
        (void)!seteuid(nobody->pw_uid);
}

OrdinaryUser::~OrdinaryUser()
{
    if (geteuid() != before_ && seteuid(before_) != 0)
        abort();
}

bool OrdinaryUser::inForce() const noexcept
{
    return geteuid() != 0;
}

std::optional<uid_t> anotherUser()
{
    const passwd* nobody = geteuid() == 0 ? getpwnam("nobody") : nullptr;
    return nobody != nullptr ? std::optional(nobody->pw_uid) : std::nullopt;
}

bool runAsAnotherUser(uid_t user, const std::function<bool()>& task)
{
    const pid_t child = fork();
    if (child == 0) {
        bool done = false;
        try {
            done = setgroups(0, nullptr) == 0 && setgid(static_cast<gid_t>(user)) == 0 && setuid(user) == 0 && task();
        } catch (const std::exception&) {
        }
        _exit(done ? 0 : 1);
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace testing
}  // namespace quenchly
