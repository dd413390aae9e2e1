// fault_probe ACTION FOLDER: does one thing in the folder, the way some part of znica does it. Status 0: it worked,
// 1: it was noticed that it did not.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <new>
#include <string>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <zlib.h>

namespace {

namespace fs = std::filesystem;

const std::string kText = "0123456789";

bool writesStream(const fs::path& folder) {
    std::ofstream stream(folder / "file");
    stream << kText;
    stream.close();
    return !!stream;
}

bool readsStream(const fs::path& folder) {
    std::ifstream stream(folder / "text");
    std::string text(kText.size(), '\0');
    return stream.read(text.data(), static_cast<std::streamsize>(text.size())) && text == kText;
}

bool writesFile(const fs::path& folder) {
    FILE* file = std::fopen((folder / "file").c_str(), "wb");
    if (!file) return false;
    const bool written = std::fwrite(kText.data(), 1, kText.size(), file) == kText.size();
    return std::fclose(file) == 0 && written;
}

bool readsFile(const fs::path& folder) {
    FILE* file = std::fopen((folder / "text").c_str(), "rb");
    if (!file) return false;
    std::string text(kText.size(), '\0');
    const bool got = std::fread(text.data(), 1, text.size(), file) == text.size();
    return std::fclose(file) == 0 && got && text == kText;
}

bool writesCompressed(const fs::path& folder) {
    const gzFile file = gzopen((folder / "file").c_str(), "wb1");
    if (!file) return false;
    const bool written = gzwrite(file, kText.data(), static_cast<unsigned>(kText.size())) > 0;
    return gzclose(file) == Z_OK && written;
}

bool readsCompressed(const fs::path& folder) {
    const gzFile file = gzopen((folder / "text.gz").c_str(), "rb");
    if (!file) return false;
    std::string text(kText.size(), '\0');
    const bool got = gzread(file, text.data(), static_cast<unsigned>(text.size())) == static_cast<int>(text.size());
    return gzclose(file) == Z_OK && got && text == kText;
}

bool writesPieces(const fs::path& folder) {
    const int file = open((folder / "file").c_str(), O_WRONLY | O_CREAT, 0600);
    if (file < 0) return false;
    std::string half = kText.substr(0, 5);
    const iovec pieces[] = {{half.data(), half.size()}, {half.data(), half.size()}};
    const bool written = writev(file, pieces, 2) == 10;
    return close(file) == 0 && written;
}

bool syncs(const fs::path& folder) {
    const int file = open((folder / "text").c_str(), O_RDONLY);
    if (file < 0) return false;
    const bool synced = fsync(file) == 0 && fdatasync(file) == 0;
    return close(file) == 0 && synced;
}

// Functions that throw or set an error.
bool succeeds(const std::function<void(std::error_code&)>& action) {
    std::error_code error;
    action(error);
    return !error;
}

const std::map<std::string, bool (*)(const fs::path&)> kActions = {
    {"writes a stream", writesStream},
    {"reads a stream", readsStream},
    {"writes a file", writesFile},
    {"reads a file", readsFile},
    {"writes compressed", writesCompressed},
    {"reads compressed", readsCompressed},
    {"writes pieces", writesPieces},
    {"syncs", syncs},
    {"lists",
     [](const fs::path& folder) {
         return succeeds([&](auto& error) {
             for (fs::directory_iterator entry(folder, error), end; !error && entry != end;) entry.increment(error);
         });
     }},
    {"renames", [](const fs::path& folder) { return rename((folder / "text").c_str(), (folder / "t").c_str()) == 0; }},
    {"exchanges",
     [](const fs::path& folder) {
         return renameat2(AT_FDCWD, (folder / "text").c_str(), AT_FDCWD, (folder / "text.gz").c_str(),
                          RENAME_EXCHANGE) == 0;
     }},
    {"renames a path",
     [](const fs::path& folder) {
         return succeeds([&](auto& error) { fs::rename(folder / "text", folder / "t", error); });
     }},
    {"makes a folder", [](const fs::path& folder) { return mkdir((folder / "new").c_str(), 0700) == 0; }},
    {"makes a path",
     [](const fs::path& folder) {
         return succeeds([&](auto& error) { fs::create_directory(folder / "new", error); });
     }},
    {"removes a file", [](const fs::path& folder) { return unlink((folder / "text").c_str()) == 0; }},
    {"removes a folder", [](const fs::path& folder) { return rmdir((folder / "empty").c_str()) == 0; }},
    {"removes a path",
     [](const fs::path& folder) { return succeeds([&](auto& error) { fs::remove(folder / "text", error); }); }},
    {"removes all",
     [](const fs::path& folder) { return succeeds([&](auto& error) { fs::remove_all(folder / "full", error); }); }},
    {"allocates",
     [](const fs::path&) {
         try {
             const std::string text(100'000, 'x');
             return text.size() == 100'000;
         } catch (const std::bad_alloc&) {
             return false;
         }
     }},
    {"starts a thread",
     [](const fs::path&) {
         try {
             std::thread([] {}).join();
             return true;
         } catch (const std::exception&) {
             return false;
         }
     }},
};

} // namespace

int main(int, char** arguments) {
    try {
        return kActions.at(arguments[1])(arguments[2]) ? 0 : 1;
    } catch (const std::exception&) {
        return 1;
    }
}
