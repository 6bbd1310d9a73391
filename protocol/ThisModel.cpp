// The model that the generator made of this library.

#include "protocol/Model.h"
#include "protocol/ModelText.h"

namespace Protocol {

const std::string& ThisModelText()
{
    static const std::string kText = [] {
        std::string text;
        for (const char* const line : kModelLines)
            text.append(line).append("\n");
        return text;
    }();
    return kText;
}

const Model& ThisModel()
{
    static const Model kModel = ParseModel(ThisModelText());
    return kModel;
}

}  // namespace Protocol
