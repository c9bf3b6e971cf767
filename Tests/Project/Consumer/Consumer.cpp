// A caller of the library: everything that only works where the library exports enough.
#include <iostream>
#include <string>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <QuarnScreen/QuarnScreen.h>

#include "Names.h"

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    std::cout << "failed: " << what << '\n';
    ++failures;
}

// Whether an object of a derived type, thrown here, arrives under the library's name for its base.
template <class Thrown, class Caught, class... Arguments>
bool catches(const Arguments&... arguments) {
    try {
        throw Thrown(arguments...);
    } catch (const Caught& caught) {
        return caught.message() == L"text" && dynamic_cast<const Thrown*>(&caught) != nullptr;
    }
}

void catchWhatIsThrownHere() {
    const std::string file = "unit";
    const std::wstring text = L"text";
    expect(catches<ZelmoreExceptionBase, ZelmoreExceptionBase>(file, 1, text), "base as itself");
    expect(catches<ZelmoreException, ZelmoreExceptionBase>(file, 1, text), "exception as base");
    expect(catches<ZelmoreParseException, ZelmoreException>(file, 1, text), "parse exception as exception");
    expect(catches<ZelmoreExceptionRuntime, ZelmoreExceptionBase>(file, 1, text),
           "runtime exception as base");
    expect(catches<ObjLoadException, ZelmoreException>(2, text), "load exception as exception");
}

// An XML element with an empty one in it.
class Element {
public:
    Element() {
        xercesc::XMLPlatformUtils::Initialize();
        const XMLCh name[] = {'E', 0};
        document = xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, name, nullptr);
        get()->appendChild(document->createElement(name));
    }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element() {
        document->release();
        xercesc::XMLPlatformUtils::Terminate();
    }
    [[nodiscard]] xercesc::DOMElement* get() const { return document->getDocumentElement(); }

private:
    xercesc::DOMDocument* document;
};

bool catchWhatTheLibraryThrows(xercesc::DOMNode* empty) {
    try {
        XmlHelper::readDouble(empty, nullptr);
    } catch (const ZelmoreParseException& exception) {
        return exception.line() == 223;
    }
    return false;
}

// A screen of the caller's own, on top of the library's.
class NamedScreen : public FlatScreen {
public:
    using FlatScreen::FlatScreen;
    static std::string loggerName() {
        std::string name;
        log->getName(name);
        return name;
    }
};

}  // namespace

int main() {
    catchWhatIsThrownHere();
    const Element element;
    expect(catchWhatTheLibraryThrows(element.get()->getFirstChild()), "parse exception of the library");
    for (const std::string& what : valueNamesThatFail(element.get())) expect(false, what.c_str());
    for (const std::string& what : screenNamesThatFail()) expect(false, what.c_str());

    const bool* address = &IScreenGeometry::kNoExtrapolation;
    expect(!*address, "kNoExtrapolation is false");
    expect(NamedScreen::loggerName() == "Quarn.QuarnScreen.ScreenGeometry", "the shapes' logger");

    const NamedScreen screen(4.0, 2.0);
    const IScreenGeometry& contract = screen;
    expect(dynamic_cast<const ScreenGeometry*>(&contract) != nullptr, "type information of ScreenGeometry");
    const IntersectionSet hits = contract.intersect({0.0, -2.0, 0.5}, {0.5, 0.0, 0.5});
    expect(hits.count() == 1, "one hit");
    if (failures != 0) return 1;
    const Point<double, 3>& hit = hits.first().point;
    std::cout << "hit " << hit[0] << ' ' << hit[1] << ' ' << hit[2] << '\n';
    return hit == Point<double, 3>(0.5, 0.0, 0.5) ? 0 : 1;
}
