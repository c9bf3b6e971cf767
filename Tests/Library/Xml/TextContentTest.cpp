#include <Common/Detail/NodeText.h>
#include <Common/XmlHelper.h>
#include <QuarnScreen/FlatScreen.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <string>
#include <vector>

#include "Support/Dom.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using xercesc::DOMNode;

std::u16string randomUnits(Rng& rng) {
    std::u16string units;
    for (int left = rng.integer(0, 6); left > 0; --left) {
        const int kind = rng.integer(0, 4);
        const int low = kind == 0 ? 0xD800 : kind == 1 ? 0xDC00 : kind == 2 ? 0xE000 : 0x20;
        units += static_cast<char16_t>(low + rng.integer(0, 0x3FF));
    }
    return units;
}

// A child of any kind that may stand below an element.
DOMNode* randomChild(Rng& rng, xercesc::DOMDocument& document) {
    const std::u16string units = randomUnits(rng);
    switch (rng.integer(0, 6)) {
        case 0:
            return document.createTextNode(units.c_str());
        case 1:
            return document.createCDATASection(units.c_str());
        case 2:
            return document.createComment(units.c_str());
        case 3:
            return document.createProcessingInstruction(u"p", units.c_str());
        case 4:
            return document.createEntityReference(u"e");
        default:
            return document.createElement(u"b");
    }
}

void fillRandomly(Rng& rng, xercesc::DOMDocument& document, DOMNode& root) {
    std::vector<DOMNode*> parents = {&root};
    for (int left = rng.integer(0, 25); left > 0; --left) {
        DOMNode* parent =
            parents[static_cast<std::size_t>(rng.integer(0, static_cast<int>(parents.size()) - 1))];
        DOMNode* child = parent->appendChild(randomChild(rng, document));
        if (child->getNodeType() == DOMNode::ELEMENT_NODE) parents.push_back(child);
    }
}

// Calls `check` for the node and all below it.
void forEachNode(const DOMNode& node, const std::function<void(const DOMNode&)>& check) {
    check(node);
    for (const DOMNode* child = node.getFirstChild(); child != nullptr; child = child->getNextSibling())
        forEachNode(*child, check);
}

std::u16string xercesText(const DOMNode& node) {
    const XMLCh* text = node.getTextContent();
    return text == nullptr ? std::u16string() : std::u16string(text);
}

// UTF-16 units of our text. A surrogate of the text itself passes unchanged, so nothing is lost on
// the way.
std::u16string ourText(const DOMNode& node) {
    return toXmlText(detail::textContent(node));
}

void runOnStackOf(std::size_t bytes, std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, bytes), 0);
    pthread_t thread = 0;
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

TEST(TextContent, IsThatOfXercesOnRandomTrees) {
    int characters = 0;
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const DocumentPtr document = parseDocument("<!DOCTYPE a [<!ENTITY e \"x<b>y<!--z--></b>\">]><a/>");
        fillRandomly(rng, *document, *document->getDocumentElement());
        forEachNode(*document, [&](const DOMNode& node) {
            const std::u16string ours = ourText(node);
            ASSERT_EQ(ours, xercesText(node));
            characters += static_cast<int>(ours.size());
        });
    }
    EXPECT_GT(characters, 10000);
}

TEST(TextContent, IsThatOfXercesForEachKindOfNode) {
    const DocumentPtr document = parseDocument(
        "<!DOCTYPE a [<!ELEMENT a (b*)><!ELEMENT b (#PCDATA)><!ENTITY e \"x<b>y</b>\"><!ENTITY f \"z\">"
        "<!NOTATION n SYSTEM \"s\"><!ATTLIST a k CDATA \"default\">]>"
        "<!--c--><a k=\"v&f;w\"> <b>1</b>\n<b>2</b> &e;</a><?p q?>");
    forEachNode(*document, [](const DOMNode& node) { EXPECT_EQ(ourText(node), xercesText(node)); });

    const auto* attribute = document->getDocumentElement()->getAttributeNode(u"k");
    EXPECT_EQ(ourText(*attribute), xercesText(*attribute));
    const auto* entities = document->getDoctype()->getEntities();
    ASSERT_EQ(entities->getLength(), 2U);
    EXPECT_EQ(ourText(*entities->item(0)), xercesText(*entities->item(0)));
    const auto* notation = document->getDoctype()->getNotations()->item(0);
    EXPECT_EQ(ourText(*notation), xercesText(*notation));
    auto* fragment = document->createDocumentFragment();
    fragment->appendChild(document->createTextNode(u"f"));
    EXPECT_EQ(detail::textContent(*fragment), L"f");
}

// The text of an element whose children are appended by `fill`.
std::wstring textOfFilled(const std::function<void(xercesc::DOMDocument&, DOMNode&)>& fill) {
    const DocumentPtr document = newDocument();
    DOMNode* element = document->appendChild(document->createElement(u"d"));
    fill(*document, *element);
    return detail::textContent(*element);
}

constexpr char16_t kLead[] = {u'a', 0xD83D, 0};
constexpr char16_t kTrail[] = {0xDDB5, u'b', 0};

TEST(TextContent, JoinsASurrogatePairAcrossTwoTextNodes) {
    EXPECT_EQ(textOfFilled([](auto& document, auto& element) {
                  element.appendChild(document.createTextNode(kLead));
                  element.appendChild(document.createTextNode(kTrail));
              }),
              L"a\U0001F5B5b");
    // An empty text and an element boundary lie between the two units.
    EXPECT_EQ(
        textOfFilled([](auto& document, auto& element) {
            element.appendChild(document.createTextNode(kLead));
            element.appendChild(document.createTextNode(u""));
            element.appendChild(document.createElement(u"e"))->appendChild(document.createTextNode(kTrail));
        }),
        L"a\U0001F5B5b");
}

TEST(TextContent, JoinsASurrogatePairAcrossATextAndACDataSection) {
    EXPECT_EQ(textOfFilled([](auto& document, auto& element) {
                  element.appendChild(document.createTextNode(kLead));
                  element.appendChild(document.createCDATASection(kTrail));
              }),
              L"a\U0001F5B5b");
    EXPECT_EQ(textOfFilled([](auto& document, auto& element) {
                  element.appendChild(document.createCDATASection(kLead));
                  element.appendChild(document.createTextNode(kTrail));
              }),
              L"a\U0001F5B5b");
}

TEST(TextContent, JoinsASurrogatePairAcrossAComment) {
    EXPECT_EQ(textOfFilled([](auto& document, auto& element) {
                  element.appendChild(document.createTextNode(kLead));
                  element.appendChild(document.createComment(u"c"));
                  element.appendChild(document.createTextNode(kTrail));
              }),
              L"a\U0001F5B5b");
}

TEST(TextContent, KeepsALeadSurrogateAtTheEndOfTheLastNode) {
    const std::wstring loneLead = {L'a', static_cast<wchar_t>(0xD83D)};
    EXPECT_EQ(textOfFilled(
                  [](auto& document, auto& element) { element.appendChild(document.createTextNode(kLead)); }),
              loneLead);
    // The trail after the element is not part of its text.
    const DocumentPtr document = newDocument();
    DOMNode* root = document->appendChild(document->createElement(u"r"));
    DOMNode* element = root->appendChild(document->createElement(u"d"));
    element->appendChild(document->createTextNode(kLead));
    root->appendChild(document->createTextNode(kTrail));
    EXPECT_EQ(detail::textContent(*element), loneLead);
    EXPECT_EQ(detail::textContent(*root), L"a\U0001F5B5b");
}

TEST(TextContent, KeepsALeadSurrogateBeforeANodeWithoutATrail) {
    EXPECT_EQ(textOfFilled([](auto& document, auto& element) {
                  element.appendChild(document.createTextNode(kLead));
                  element.appendChild(document.createTextNode(u"b"));
              }),
              (std::wstring{L'a', static_cast<wchar_t>(0xD83D), L'b'}));
    // The second lead takes the trail.
    EXPECT_EQ(textOfFilled([](auto& document, auto& element) {
                  element.appendChild(document.createTextNode(kLead));
                  element.appendChild(document.createTextNode(kLead + 1));
                  element.appendChild(document.createTextNode(kTrail));
                  element.appendChild(document.createTextNode(kTrail));
              }),
              (std::wstring{L'a', static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0x1F5B5), L'b',
                            static_cast<wchar_t>(0xDDB5), L'b'}));
}

// Converting the text of all nodes at once is the reference.
TEST(TextContent, IsTheConversionOfTheWholeTextOnRandomTrees) {
    int joinedAcrossNodes = 0;
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const DocumentPtr document = parseDocument("<!DOCTYPE a [<!ENTITY e \"x<b>y<!--z--></b>\">]><a/>");
        fillRandomly(rng, *document, *document->getDocumentElement());
        const DOMNode& root = *document->getDocumentElement();
        ASSERT_EQ(detail::textContent(root), detail::fromXmlText(xercesText(root).c_str()));

        std::wstring nodeByNode;
        forEachNode(root, [&](const DOMNode& node) {
            const auto type = node.getNodeType();
            if (type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE)
                nodeByNode += detail::fromXmlText(node.getNodeValue());
        });
        if (nodeByNode.size() != detail::textContent(root).size()) ++joinedAcrossNodes;
    }
    EXPECT_GT(joinedAcrossNodes, 30);
}

TEST(TextContent, OfADocumentIsEmpty) {
    const DocumentPtr document = parseDocument("<a>text</a>");
    EXPECT_EQ(detail::textContent(*document), L"");
    EXPECT_EQ(detail::textContent(*document->getDocumentElement()), L"text");
}

TEST(TextContent, LeavesOutWhatStandsBesideTheNode) {
    const DocumentPtr document = parseDocument("<a>1<b>2<c/></b>3</a>");
    const DOMNode* b = document->getDocumentElement()->getFirstChild()->getNextSibling();
    EXPECT_EQ(detail::textContent(*b), L"2");
    EXPECT_EQ(detail::textContent(*b->getLastChild()), L"");
    EXPECT_EQ(detail::textContent(*b->getFirstChild()), L"2");
}

TEST(FromXmlText, JoinsSurrogatePairs) {
    EXPECT_EQ(detail::fromXmlText(u"a\U0001F5B5b\U00010000\U0010FFFF"), L"a\U0001F5B5b\U00010000\U0010FFFF");
    for (char32_t codePoint = 0x10000U; codePoint <= 0x10FFFFU; ++codePoint) {
        const std::wstring text(1, static_cast<wchar_t>(codePoint));
        ASSERT_EQ(detail::fromXmlText(toXmlText(text).c_str()), text);
    }
}

TEST(FromXmlText, KeepsALoneSurrogate) {
    const auto wide = [](std::initializer_list<int> values) {
        return std::wstring(values.begin(), values.end());
    };
    constexpr char16_t kLeadAtEnd[] = {u'a', 0xD83D, 0};
    constexpr char16_t kTrailAlone[] = {0xDDB5, u'a', 0};
    constexpr char16_t kTwoLeads[] = {0xD83D, 0xD83D, 0xDDB5, 0xDDB5, 0};
    constexpr char16_t kLeadAndLetter[] = {0xDBFF, 0xE000, 0};
    EXPECT_EQ(detail::fromXmlText(kLeadAtEnd), wide({L'a', 0xD83D}));
    EXPECT_EQ(detail::fromXmlText(kTrailAlone), wide({0xDDB5, L'a'}));
    EXPECT_EQ(detail::fromXmlText(kTwoLeads), wide({0xD83D, 0x1F5B5, 0xDDB5}));
    EXPECT_EQ(detail::fromXmlText(kLeadAndLetter), wide({0xDBFF, 0xE000}));
}

TEST(FromXmlText, OfNullIsEmpty) {
    EXPECT_EQ(detail::fromXmlText(nullptr), L"");
    EXPECT_EQ(detail::fromXmlText(u""), L"");
}

TEST(TextContent, OfAMillionLevelsNeedsNoDeepStack) {
    constexpr int kLevels = 1000000;
    constexpr std::size_t kSmallStack = 256 * 1024;
    const DocumentPtr document = newDocument();
    DOMNode* tree = document->createTextNode(u"5");
    // From the innermost element outwards: an append to a deep element walks up to the root.
    for (int level = 0; level < kLevels; ++level) {
        DOMNode* parent = document->createElement(level + 1 == kLevels ? u"Screen_Width" : u"b");
        parent->appendChild(tree);
        if (level % 100000 == 0) parent->appendChild(document->createTextNode(u"2"));
        tree = parent;
    }
    DOMNode* root = document->createElement(u"ScreenGeometry");
    root->appendChild(tree);

    runOnStackOf(kSmallStack, [&] {
        EXPECT_EQ(detail::textContent(*root), L"52222222222");
        FlatScreen screen(1.0, 3.0);
        screen.deserialize(root);
        EXPECT_EQ(screen.getWidth(), 52222222222.0);
        EXPECT_EQ(screen.getHeight(), 3.0);
    });
}

}  // namespace
}  // namespace quarn::test
