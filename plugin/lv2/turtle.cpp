// What the manifest and the plug-in's own file say.
#include "plugin/lv2/turtle.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "platform/product.h"
#include "state/factory_sounds.h"
#include "plugin/lv2/change_request.h"
#include "plugin/lv2/ports.h"
#include "plugin/lv2/turtle_text.h"
#include "plugin/lv2/uris.h"
#include "state/panels.h"
#include "state/parameter_text.h"

namespace lv2 {

namespace {

constexpr char kPrefixes[] = R"(@prefix atom: <http://lv2plug.in/ns/ext/atom#> .
@prefix bufsz: <http://lv2plug.in/ns/ext/buf-size#> .
@prefix doap: <http://usefulinc.com/ns/doap#> .
@prefix foaf: <http://xmlns.com/foaf/0.1/> .
@prefix lv2: <http://lv2plug.in/ns/lv2core#> .
@prefix midi: <http://lv2plug.in/ns/ext/midi#> .
@prefix opts: <http://lv2plug.in/ns/ext/options#> .
@prefix owl: <http://www.w3.org/2002/07/owl#> .
@prefix param: <http://lv2plug.in/ns/ext/parameters#> .
@prefix pg: <http://lv2plug.in/ns/ext/port-groups#> .
@prefix pprops: <http://lv2plug.in/ns/ext/port-props#> .
@prefix pset: <http://lv2plug.in/ns/ext/presets#> .
@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .
@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .
@prefix rsz: <http://lv2plug.in/ns/ext/resize-port#> .
@prefix state: <http://lv2plug.in/ns/ext/state#> .
@prefix ui: <http://lv2plug.in/ns/extensions/ui#> .
@prefix units: <http://lv2plug.in/ns/extensions/units#> .
@prefix urid: <http://lv2plug.in/ns/ext/urid#> .
@prefix xsd: <http://www.w3.org/2001/XMLSchema#> .

)";

std::string uri(const std::string& fragment = "") {
    return std::string("<") + kPluginUri + fragment + '>';
}

std::string presetUri(int program) {
    return uri("#preset" + std::to_string(1000 + program).substr(1));  // in order as texts
}

// A name as a part of URIs and symbols.
std::string symbolOf(const std::string& prefix, const std::string& name) {
    std::string symbol = prefix;
    for (const char c : name) symbol += c == ' ' ? '_' : c;
    return symbol;
}

std::string groupSymbol(const state::Panel& panel) {
    return symbolOf("group_", panel.name);
}

std::string familyUri(const std::string& family) {
    return uri("#" + symbolOf("family_", family));
}

const state::FactorySound& soundOf(const state::Bank& bank, int program) {
    const std::string name = bank.programName(program);
    const state::FactorySound* const sound = state::factorySound(program, name);
    if (!sound) throw std::runtime_error("program \"" + name + "\" is not among the sounds");
    return *sound;
}

// Odd versions are those under development, so ours count by two.
std::string versionTurtle() {
    char* rest = nullptr;
    std::strtol(platform::productVersion(), &rest, 10);
    const long minor = std::strtol(rest + 1, &rest, 10);
    const long patch = std::strtol(rest + 1, &rest, 10);
    return "\tlv2:minorVersion " + std::to_string(2 * minor) + " ;\n\tlv2:microVersion " +
           std::to_string(2 * patch);
}

const char* unitName(state::Unit unit) {
    switch (unit) {
        case state::Unit::kPercent:
            return "units:pc";
        case state::Unit::kSeconds:
            return "units:ms";
        case state::Unit::kHertz:
        case state::Unit::kSlowHertz:
            return "units:hz";
        case state::Unit::kDecibels:
            return "units:db";
        case state::Unit::kCents:
            return "units:cent";
        case state::Unit::kDegrees:
            return "units:degree";
        default:
            return nullptr;
    }
}

std::string positionsTurtle(int index) {
    const state::Law& law = state::parameter(index).law;
    std::string text = law.kind == state::Law::kSwitch
                           ? " ;\n\t\tlv2:portProperty lv2:toggled"
                           : " ;\n\t\tlv2:portProperty lv2:integer , lv2:enumeration";
    const char* separator = " ;\n\t\tlv2:scalePoint ";
    for (int position = 0; position < law.positions; ++position) {
        const float value = state::valueFromPlain(index, position);
        text += separator + std::string("[ rdfs:label ") + quoted(state::plainText(index, value)) +
                " ; rdf:value " + decimal(static_cast<float>(position)) + " ]";
        separator = " , ";
    }
    return text;
}

// Of a quantity that is heard by its ratios and never comes near 0.
bool isLogarithmic(int index) {
    const float low = portValue(index, 0.0f);
    const float high = portValue(index, 1.0f);
    return state::parameter(index).law.unit != state::Unit::kDecibels && low > 0.0f &&
           high > 10.0f * low && high < 1000.0f * low;
}

std::string parameterTurtle(int index, const state::Bank& bank) {
    const state::Parameter& parameter = state::parameter(index);
    std::string text = "\t\ta lv2:InputPort , lv2:ControlPort ;\n\t\tlv2:index " +
                       std::to_string(index) + " ;\n\t\tlv2:symbol " + quoted(portSymbol(index)) +
                       " ;\n\t\tlv2:name " + quoted(parameter.title) + " ;\n\t\tlv2:default " +
                       decimal(portValue(index, bank.value(0, index))) + " ;\n\t\tlv2:minimum " +
                       decimal(portValue(index, 0.0f)) + " ;\n\t\tlv2:maximum " +
                       decimal(portValue(index, 1.0f)) + " ;\n\t\tpg:group " +
                       uri("#" + groupSymbol(state::panelOf(index)));
    if (parameter.law.positions > 0) text += positionsTurtle(index);
    if (isLogarithmic(index)) text += " ;\n\t\tlv2:portProperty pprops:logarithmic";
    if (const char* const unit = unitName(parameter.law.unit)) {
        text += " ;\n\t\tunits:unit " + std::string(unit);
    }
    return text;
}

std::string otherPortsTurtle() {
    std::ostringstream text;
    text << R"(		a lv2:InputPort , lv2:ControlPort ;
		lv2:index )"
         << kEnabledPort << R"( ;
		lv2:symbol "enabled" ;
		lv2:name "Enabled" ;
		lv2:designation lv2:enabled ;
		lv2:portProperty lv2:toggled ;
		lv2:default 1.0 ;
		lv2:minimum 0.0 ;
		lv2:maximum 1.0
	] , [
		a lv2:InputPort , atom:AtomPort ;
		lv2:index )"
         << kMidiPort << R"( ;
		lv2:symbol "midi_in" ;
		lv2:name "MIDI In" ;
		lv2:designation lv2:control ;
		atom:bufferType atom:Sequence ;
		atom:supports midi:MidiEvent ;
		rsz:minimumSize 16384
	] , [
		a lv2:OutputPort , lv2:AudioPort ;
		lv2:index )"
         << kLeftPort << R"( ;
		lv2:symbol "left" ;
		lv2:name "Left" ;
		lv2:designation pg:left ;
		pg:group )"
         << uri("#out") << R"(
	] , [
		a lv2:OutputPort , lv2:AudioPort ;
		lv2:index )"
         << kRightPort << R"( ;
		lv2:symbol "right" ;
		lv2:name "Right" ;
		lv2:designation pg:right ;
		pg:group )"
         << uri("#out");
    return text.str();
}

}  // namespace

std::string manifestTurtle(const state::Bank& bank) {
    std::ostringstream text;
    text << kPrefixes << uri() << "\n\ta lv2:Plugin ;\n"
         << "\tlv2:binary <QuarzelStrings.so> ;\n"
         << "\trdfs:seeAlso <QuarzelStrings.ttl> ;\n"
         << versionTurtle() << " .\n\n<" << kUiUri << ">\n\ta ui:X11UI ;\n"
         << "\tlv2:binary <QuarzelStrings.so> ;\n"
         << "\trdfs:seeAlso <QuarzelStrings.ttl> .\n";
    for (int program = 0; program < state::kNumPrograms; ++program) {
        text << '\n'
             << presetUri(program) << "\n\ta pset:Preset ;\n\tlv2:appliesTo " << uri()
             << " ;\n\trdfs:label " << quoted(soundOf(bank, program).name)
             << " ;\n\trdfs:seeAlso <presets.ttl> .\n";
    }
    return text.str();
}

std::string pluginTurtle(const state::Bank& bank) {
    std::ostringstream text;
    text << kPrefixes;
    for (const state::Panel& panel : state::panels()) {
        const std::string symbol = groupSymbol(panel);
        text << uri("#" + symbol) << "\n\ta pg:InputGroup ;\n\tlv2:name " << quoted(panel.name)
             << " ;\n\tlv2:symbol " << quoted(symbol) << " .\n\n";
    }
    text << uri("#out") << "\n\ta pg:OutputGroup , pg:StereoGroup ;\n"
         << "\tlv2:name \"Stereo Out\" ;\n\tlv2:symbol \"out\" .\n\n<" << kProgramKey
         << ">\n\ta rdf:Property , owl:DatatypeProperty ;\n\trdfs:label \"program\" ;\n"
         << "\trdfs:comment \"The program that a preset selects.\" ;\n\trdfs:range xsd:integer "
            ".\n\n<"
         << kChangeRequestUri << ">\n\ta lv2:Feature .\n\n<" << kUiUri << R"(>
	lv2:requiredFeature urid:map , ui:idleInterface , <http://lv2plug.in/ns/ext/instance-access> ;
	lv2:optionalFeature ui:parent , ui:resize , ui:touch , ui:noUserResize , opts:options ,
		<http://lv2plug.in/ns/ext/log#log> ;
	opts:supportedOption ui:scaleFactor ;
	lv2:extensionData ui:idleInterface .

)" << uri()
         << "\n\ta lv2:Plugin , lv2:InstrumentPlugin , doap:Project ;\n\tdoap:name "
         << quoted(platform::kProductName) << " ;\n\tdoap:shortdesc "
         << quoted("A string machine of the nineteen-seventies") << " ;\n"
         << "\tdoap:license <https://opensource.org/licenses/MIT> ;\n"
         << "\tdoap:maintainer [\n\t\ta foaf:Person ;\n\t\tfoaf:name "
         << quoted(platform::kCompanyName) << " ;\n\t\tfoaf:homepage <https://"
         << platform::kCompanyDomain << ">\n\t] ;\n"
         << versionTurtle() << R"( ;
	lv2:requiredFeature urid:map ;
	lv2:optionalFeature lv2:hardRTCapable , opts:options , state:threadSafeRestore ,
		<http://lv2plug.in/ns/ext/log#log> , <)"
         << kChangeRequestUri << R"(> ;
	lv2:extensionData state:interface , opts:interface ;
	opts:supportedOption param:sampleRate , bufsz:maxBlockLength ;
	pg:mainOutput )"
         << uri("#out") << " ;\n\tui:ui <" << kUiUri << "> ;\n\tlv2:port [\n";
    for (int i = 0; i < state::kNumParams; ++i) text << parameterTurtle(i, bank) << "\n\t] , [\n";
    text << otherPortsTurtle() << "\n\t] .\n";
    return text.str();
}

std::string presetsTurtle(const state::Bank& bank) {
    std::ostringstream text;
    text << kPrefixes;
    std::string family;
    for (int program = 0; program < state::kNumPrograms; ++program) {
        const state::FactorySound& sound = soundOf(bank, program);
        if (sound.family != family) {
            family = sound.family;
            text << familyUri(family) << "\n\ta pset:Bank ;\n\trdfs:label " << quoted(family)
                 << " .\n\n";
        }
        text << presetUri(program) << "\n\ta pset:Preset ;\n\tlv2:appliesTo " << uri()
             << " ;\n\tpset:bank " << familyUri(family) << " ;\n\trdfs:label " << quoted(sound.name)
             << " ;\n\trdfs:comment " << quoted(sound.character) << " ;\n\tstate:state [ <"
             << kProgramKey << "> " << program << " ] ;\n\tlv2:port ";
        for (int i = 0; i < state::kNumParams; ++i) {
            text << (i ? " ,\n\t\t" : "") << "[ lv2:symbol " << quoted(portSymbol(i))
                 << " ; pset:value " << decimal(portValue(i, bank.value(program, i))) << " ]";
        }
        text << " .\n\n";
    }
    return text.str();
}

}  // namespace lv2
