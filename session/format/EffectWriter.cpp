#include "session/format/EffectWriter.h"

#include "assetconnector/host/ferrite/Unicode.h"

#include <xercesc/dom/DOMException.hpp>

#include <exception>

namespace Session {

std::string TextOfCurrentException()
{
    try {
        throw;
    } catch (const std::exception& exception) {
        return exception.what();
    } catch (const xercesc::DOMException& exception) {
        return ferrite::utility::UTF16to8(exception.getMessage());
    } catch (...) {
        return "an exception of unknown type";
    }
}

}  // namespace Session
