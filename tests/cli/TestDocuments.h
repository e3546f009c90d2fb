#pragma once
// Small documents written as text for the command-line tests.

#include <sstream>
#include <string>

namespace tintwork::testing {

inline const char* const header =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<tintwork>\n<project>\n<header><version>1.6</version></header>\n";

inline std::string colorItem(const std::string& id, const std::string& rgba, const std::string& extra) {
    return "<colorItem><id>" + id + "</id><name>" + id + "</name><profile>sRGB</profile><color><name>" + id +
           "</name><variants><variant><rgba>" + rgba + "</rgba></variant></variants></color>" + extra +
           "</colorItem>\n";
}

// A document with one build group writing a CSS file into `folder`.
inline std::string buildDocument(const std::string& folder, const std::string& fileName) {
    return std::string(header) + "<colorItems>\n" + colorItem("Brand", "0.2 0.4 0.6 1", "<buildGroupId>G</buildGroupId>") +
           "</colorItems>\n<buildGroups><buildGroup><id>G</id><name>Web</name><tasks><task><name>CSS</name>"
           "<id>T</id><folder>" + folder + "</folder><fileName>" + fileName +
           "</fileName><fileType>1</fileType><nameTransform>4</nameTransform></task></tasks></buildGroup>"
           "</buildGroups>\n</project>\n</tintwork>\n";
}

// A document with `count` test groups, each comparing black text on a black background.
inline std::string failingTestDocument(int count) {
    std::ostringstream items;
    std::ostringstream groups;
    for (int i = 0; i < count; ++i) {
        const std::string group = "TG" + std::to_string(i);
        const std::string link = "<testGroupId>" + group + "</testGroupId><testPosition>";
        items << colorItem("Text" + std::to_string(i), "0 0 0 1", link + "foreground</testPosition>");
        items << colorItem("Back" + std::to_string(i), "0 0 0 1", link + "background</testPosition>");
        groups << "<testGroup><id>" << group << "</id><name>Group " << i
               << "</name><tests><test><name>Body</name><id>X" << i
               << "</id><type>apcaContrast</type><thresholdType>luminosity</thresholdType><threshold>60</threshold>"
                  "</test></tests></testGroup>\n";
    }
    return std::string(header) + "<colorItems>\n" + items.str() + "</colorItems>\n<testGroups>\n" + groups.str() +
           "</testGroups>\n</project>\n</tintwork>\n";
}

}  // namespace tintwork::testing
