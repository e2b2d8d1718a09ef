#include "support/Items.hpp"

#include <utility>

namespace reference::tests {

using namespace property;

RefItem makeItem(ItemFields f) {
    RefItem item(std::move(f.href), std::move(f.entities), std::move(f.packageName),
                 std::move(f.purpose), std::move(f.introduced), std::move(f.description),
                 std::move(f.appThumbnail), f.deprecationStatus, std::move(f.syntaxGroups),
                 std::move(f.inputs), std::move(f.inputGroups), std::move(f.outputs),
                 std::move(f.classPropertyGroups), std::move(f.seeAlso), std::move(f.examples),
                 std::move(f.parameters));
    item.setReplacements(std::move(f.replacements));
    return item;
}

RefItem makeFullItem(std::u16string href) {
    return makeItem(
        {.href = std::move(href),
         .entities = {RefEntity(RefEntityType::Class, u"pkg.Probe", FunctionType::NotCallable),
                      RefEntity(RefEntityType::Function, u"pkg.probe", FunctionType::Function)},
         .packageName = u"pkg",
         .purpose = u"Measures a \"quantity\" \\ Größe 測定.",
         .introduced = u"9.1",
         .description = u"First paragraph.\n\nSecond paragraph.",
         .appThumbnail = AppThumbnail(u"images/probe.png", u"A probe"),
         .deprecationStatus = DeprecationStatus::Deprecated,
         .syntaxGroups = {SyntaxGroup(u"Creation", {u"p = Probe()", u"p = Probe(rate)"})},
         .inputs = {Input(u"rate", u"Samples a second", u"ref/probe.html#rate",
                          {u"positive scalar", u"\"auto\""})},
         .inputGroups = {InputGroup(u"Required", {Input(u"rate", u"Samples a second", u"", {})})},
         .outputs = {Output(u"p", u"The probe", u"", {u"Probe"})},
         .classPropertyGroups = {ClassPropertyGroup(
                                     u"Timing", {ClassProperty(u"Rate", u"Samples a second",
                                                               u"ref/probe.html#Rate", {u"100"})}),
                                 ClassPropertyGroup(u"", {ClassProperty(u"Name", u"", u"", {})})},
         .seeAlso = {SeeAlso(u"ref/gauge.html", u"pkg.Gauge")},
         .examples = {Example(u"Measure once", u"p = Probe\nread(p)")},
         .parameters = {Parameter(u"Gain", u"Amplification", u"1")},
         .replacements = {SeeAlso(u"ref/sensor.html", u"pkg.Sensor")}});
}

}  // namespace reference::tests
