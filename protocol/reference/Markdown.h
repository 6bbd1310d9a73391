#pragma once

#include "protocol/Model.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// Pieces of the reference.
namespace Protocol::Markdown {

std::string Code(std::string_view text);

/// \return The items with that between them; the fallback when there are none.
std::string Join(const std::vector<std::string>& items, std::string_view fallback = "",
                 std::string_view between = ", ");

/// \return A link to an event of this page.
std::string EventLink(const Event& event);

/// \return The same; the bare identifier when the model does not have it.
std::string EventLink(const Model& model, const std::string& identifier);

/// \return A link to the section of an element below the root.
std::string ElementLink(std::string_view path);

/// \return A row of a table.
std::string Row(std::initializer_list<std::string> cells);

/// \return The two lines that begin a table.
std::string TableHead(std::initializer_list<std::string> titles);

/// \return "library" as people call it.
std::string ConnectorTitle(std::string_view connector);

}  // namespace Protocol::Markdown
