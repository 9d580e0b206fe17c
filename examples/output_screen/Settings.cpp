// SPDX-License-Identifier: MIT
#include <examples/output_screen/Settings.h>

#include <VX_OpenGL64/output/VX_FinalOutputManager.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>

using nlohmann::json;

namespace {

// Numbers and texts are all that settings have; whatever else the file says is passed by.
NSObject* objectOf(const json& value) {
    if (value.is_boolean())
        return NSNumber::numberWithBool(value.get<bool>());
    if (value.is_number())
        return NSNumber::numberWithDouble(value.get<double>());
    if (value.is_string())
        return NSString::stringWithUTF8String(value.get<std::string>().c_str());
    return nullptr;
}

json valueOf(NSObject* object) {
    if (const auto* const text = dynamic_cast<NSString*>(object))
        return text->string();
    const auto* const value = dynamic_cast<NSNumber*>(object);
    const double number = value ? value->doubleValue() : 0.0;
    if (number == std::trunc(number) && std::abs(number) < 1e9)
        return static_cast<int>(number);
    return number;
}

bool complain(const std::string& file, const char* what) {
    std::fprintf(stderr, "%s: %s\n", file.c_str(), what);
    return false;
}

} // namespace

bool readSettings(const std::string& file, VX_FinalOutputManager* settings) {
    if (!std::filesystem::exists(file))
        return true;
    std::ifstream stream(file);
    const json values = json::parse(stream, nullptr, false);
    if (!values.is_object())
        return complain(file, "not a file of settings; it is not used, and left as it is");
    NSMutableDictionary* const dictionary = NSMutableDictionary::dictionary();
    for (const auto& item : values.items())
        if (NSObject* const object = objectOf(item.value()))
            dictionary->setObject(object, item.key().c_str());
    settings->Load(dictionary);
    return true;
}

bool writeSettings(const std::string& file, const VX_FinalOutputManager* settings) {
    NSMutableDictionary* const dictionary = NSMutableDictionary::dictionary();
    settings->Save(dictionary);
    json values;
    dictionary->enumerate([&](const char* key, NSObject* object) { values[key] = valueOf(object); });

    // First beside it: whoever reads the file finds it whole, whenever the program ends.
    const std::string fresh = file + ".new";
    std::ofstream stream(fresh);
    stream << values.dump(4, ' ', false, json::error_handler_t::replace) << "\n";
    stream.close();
    std::error_code failure;
    if (stream)
        std::filesystem::rename(fresh, file, failure);
    return (stream && !failure) || complain(file, "the settings cannot be written");
}
