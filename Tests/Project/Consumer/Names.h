/// \file
/// The settled names, used as a caller does. It links only where the library exports them.
#pragma once

#include <string>
#include <vector>
#include <xercesc/dom/DOMNode.hpp>

/// Which names of values, text, tree and map do not do what they promise. \p nodeWithChild an
/// element that contains an empty one
[[nodiscard]] std::vector<std::string> valueNamesThatFail(xercesc::DOMNode* nodeWithChild);

/// The same of screens.
[[nodiscard]] std::vector<std::string> screenNamesThatFail();
