#pragma once
// Small documents for reader tests: a project skeleton around the given elements.

#include <string>

namespace tintwork::testing {

inline std::string documentWith(const std::string& colorItems, const std::string& buildGroups = "",
                                const std::string& testGroups = "") {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<tintwork><project><header><version>1.6</version>"
           "<description>Test</description></header><settings/><colorItems>" +
           colorItems + "</colorItems><buildGroups>" + buildGroups + "</buildGroups><testGroups>" + testGroups +
           "</testGroups></project></tintwork>";
}

// A colour item with one light variant.
inline std::string colorItemXml(const std::string& id, const std::string& name, const std::string& rgba = "1 0 0 1",
                                const std::string& extra = "") {
    return "<colorItem><id>" + id + "</id><name>" + name + "</name><profile>sRGB</profile>" + extra + "<color><name>" +
           name + "</name><variants><variant><rgba>" + rgba + "</rgba></variant></variants></color></colorItem>";
}

}  // namespace tintwork::testing
