#include <Common/XmlHelper.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <locale>
#include <string>
#include <thread>
#include <vector>

#include "Support/Dom.h"
#include "Support/Rng.h"
#include "Support/ScientificText.h"

namespace quarn::test {
namespace {

// Where the tests run under a locale with a decimal comma, each of these is about that locale.

// A new thread uses the process's locale, independent of what ran before on this one.
TEST(NumberLocale, FormattingLeavesAThreadWithTheLocaleOfTheProcess) {
    std::thread([] {
        const std::string separator = localeconv()->decimal_point;
        EXPECT_EQ(XmlHelper::format(L"%.15e", 1.5), L"1.500000000000000e+00");
        EXPECT_EQ(XmlHelper::format(L"%2147483648d", 7), L"");
        EXPECT_EQ(uselocale(nullptr), LC_GLOBAL_LOCALE);
        EXPECT_EQ(localeconv()->decimal_point, separator);
    }).join();
}

TEST(NumberLocale, AThreadsOwnLocaleIsKept) {
    std::thread([] {
        const char* name = std::getenv("QUARN_TEST_LOCALE");
        const locale_t own = newlocale(LC_ALL_MASK, name == nullptr ? "C" : name, nullptr);
        ASSERT_NE(own, nullptr);
        const locale_t before = uselocale(own);
        EXPECT_EQ(XmlHelper::format(L"%.1f", 1.5), L"1.5");
        EXPECT_EQ(uselocale(before), own);
        freelocale(own);
    }).join();
}

TEST(NumberLocale, AStreamOfTheCallerKeepsItsLocale) {
    std::wostringstream out;
    const std::locale before = out.getloc();
    XmlHelper::writeTagPoint(0, out, L"p", Point<double, 3>(1234567.5, 0.0, 0.0));
    EXPECT_EQ(out.str(), L"<p>1.234567500000000e+06, 0.000000000000000e+00, 0.000000000000000e+00</p>\n");
    EXPECT_EQ(out.getloc(), before);
}

TEST(NumberLocale, TheGlobalLocaleOfStreamsIsLeftAlone) {
    const std::locale before;
    const DocumentPtr document = newDocument();
    EXPECT_EQ(XmlHelper::readDouble(appendElement(*document, L"a", L"1.5"), L""), 1.5);
    EXPECT_EQ(std::locale(), before);
}

// Each thread formats and reads numbers of its own.
TEST(NumberLocale, SeveralThreadsFormatAndReadAtOnce) {
    constexpr int kThreads = 4;
    std::vector<int> mistakes(kThreads, 0);
    startXerces();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([thread, &mistakes] {
            const DocumentPtr document = newDocument();
            auto* text = document->createTextNode(u"");
            document->appendChild(document->createElement(u"a"))->appendChild(text);
            for (int i = 0; i < seedCount(3000); ++i) {
                Rng rng(i * kThreads + thread);
                const double value = rng.spread();
                const std::wstring written = XmlHelper::format(L"%.15e", value);
                text->setNodeValue(toXmlText(written).c_str());
                const double read = XmlHelper::readDouble(document->getDocumentElement(), L"");
                const bool isRight = written == scientific16(value) && read == nearestNumber(written);
                mistakes[static_cast<std::size_t>(thread)] += isRight ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(mistakes, std::vector<int>(kThreads, 0));
}

}  // namespace
}  // namespace quarn::test
