#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>

#include <cstring>
#include <new>
#include <string>

#include "Library/Obj/ObjCases.h"
#include "Library/Obj/SampleTexts.h"

using namespace quarn;
using namespace quarn::test;

namespace {

// Texts whose ending NUL is the last readable byte.
class PageEnd {
public:
    PageEnd()
        : page(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          memory(static_cast<char*>(
              mmap(nullptr, kPages * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        mprotect(memory + (kPages - 1) * page, page, PROT_NONE);
    }
    ~PageEnd() { munmap(memory, kPages * page); }
    PageEnd(const PageEnd&) = delete;
    PageEnd& operator=(const PageEnd&) = delete;

    [[nodiscard]] std::string_view put(const std::string& text) const {
        char* const first = memory + (kPages - 1) * page - text.size() - 1;
        std::memcpy(first, text.c_str(), text.size() + 1);
        return {first, text.size()};
    }

private:
    static constexpr std::size_t kPages = 3;
    std::size_t page;
    char* memory;
};

}  // namespace

TEST(ObjTextEnd, NothingIsReadBehindTheNul) {
    const PageEnd end;
    for (const std::string& sample : sampleTexts()) {
        for (std::size_t size = 0; size <= sample.size(); ++size) {
            const std::string_view text = end.put(sample.substr(0, size));
            detail::ObjData lists;
            detail::scanVertexData(text, lists.vertexData);
            const ReferenceObjData plain = referenceObjData(std::string(text));
            if (plain.isEndless)
                ASSERT_THROW(detail::scanFaces(text, lists.faces), std::bad_alloc);
            else
                detail::scanFaces(text, lists.faces);
            ASSERT_TRUE(sameLists(lists, plain)) << "first " << size << " bytes of:\n" << sample;
        }
    }
}

TEST(ObjTextEnd, EveryPrefixIsReadAsByTheReference) {
    for (const std::string& sample : sampleTexts()) {
        ASSERT_LE(sample.size(), 4096U);
        for (std::size_t size = 0; size <= sample.size(); ++size)
            ASSERT_TRUE(isReadAsByReference(referenceBlanked(sample.substr(0, size))))
                << "first " << size << " bytes of:\n"
                << sample;
    }
}
