// What tests look for in the messages of version 2.
#pragma once

#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace reference::tests {

// The text at a JSON pointer; empty where there is none.
[[nodiscard]] inline std::string textAt(const boost::json::value& value, const char* pointer) {
    boost::json::error_code problem;
    const auto* const found = value.find_pointer(pointer, problem);
    return found != nullptr && found->is_string() ? std::string(found->as_string()) : std::string();
}

// A member of each element of a list.
[[nodiscard]] inline std::vector<std::string> textsIn(const boost::json::object& result,
                                                      const char* list, const char* member) {
    std::vector<std::string> texts;
    for (const auto& element : result.at(list).as_array())
        texts.emplace_back(element.at(member).as_string());
    return texts;
}

[[nodiscard]] inline const boost::json::object& firstHit(const boost::json::object& result) {
    return result.at("hits").as_array().at(0).as_object();
}

}  // namespace reference::tests
