#include "Spool.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/Output/WriteBytes.h>
#include <QuarnKit/Base/OutputFile.h>

namespace quarn {

namespace {

// Most outputs are smaller and need no file.
constexpr std::size_t kMemoryBytes = 4194304;
constexpr std::size_t kCopyBytes = 65536;
// At the end of a name, which mkostemp() replaces.
constexpr std::size_t kRandomLetters = 6;

Error spoolError(const std::string& name) {
    return systemError(name, "a temporary file failed");
}

std::string temporaryFolder() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return error ? "/tmp" : folder.string();
}

// The name is removed immediately, so that nothing else can open the file or has to remove it.
FileHandle openWithoutName(const std::string& folder) {
    std::string path = folder + "/quarn-" + std::string(kRandomLetters, 'X');
    FileHandle file(::mkostemp(path.data(), O_CLOEXEC));
    if (!file.isOpen()) throw spoolError(folder);
    ::unlink(path.c_str());
    return file;
}

}  // namespace

void Spool::write(std::string_view bytes) {
    buffer.append(bytes);
    if (buffer.size() >= kMemoryBytes) spill();
}

void Spool::spill() {
    if (!file.isOpen()) {
        name = temporaryFolder();
        file = openWithoutName(name);
    }
    writeToFile(buffer);
    buffer.clear();
}

void Spool::writeToFile(std::string_view bytes) {
    if (!writeBytes(file.get(), bytes)) throw spoolError(name);
}

void Spool::moveInFile(int whence) {
    if (::lseek(file.get(), 0, whence) < 0) throw spoolError(name);
}

void Spool::overwriteBeginning(std::string_view bytes) {
    if (!file.isOpen()) {
        std::copy(bytes.begin(), bytes.end(), buffer.begin());
        return;
    }
    spill();
    moveInFile(SEEK_SET);
    writeToFile(bytes);
    moveInFile(SEEK_END);
}

void Spool::copyTo(OutputFile& output) {
    if (!file.isOpen()) {
        output.write(buffer);
        return;
    }
    spill();
    moveInFile(SEEK_SET);
    buffer.resize(kCopyBytes);
    for (;;) {
        const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
        if (count < 0) throw spoolError(name);
        if (count == 0) return;
        output.write(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
    }
}

}  // namespace quarn
