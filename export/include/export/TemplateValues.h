#pragma once
// The export records as template values: each record is a template Record whose
// fields carry the records' own field names, read in place without copying.

#include <memory>
#include <vector>

#include "export/TemplateRecords.h"
#include "template/Value.h"

namespace tintwork {

// The list of items as the "items" value of a template context.
stencil::Value templateItemsValue(std::shared_ptr<const std::vector<TemplateItem>> items);
// One record as a value, sharing ownership with `owner`.
stencil::Value templateValue(std::shared_ptr<const TemplateRGBAColor> color);
stencil::Value templateValue(std::shared_ptr<const TemplateShadow> shadow);

// The colour or shadow behind a template value; null for any other value.
const TemplateRGBAColor* templateRGBAColor(const stencil::Value& value);
const TemplateShadow* templateShadow(const stencil::Value& value);

// The colour space's name as templates see it: "sRGB", "displayP3", "extendedSRGB".
std::string_view templateColorSpaceName(TemplateColorSpace space);

}  // namespace tintwork
