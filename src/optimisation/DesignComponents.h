#pragma once

#include <string>

#include "model/Forward.h"

namespace FTS {

/// The component of that full name, which has at least one implementation. Throws `VtnException`
/// "Component of the encoding is not in the model: ..." or "No current implementation found for
/// component: ...".
Component& FindDesignComponent(const Model& model, const std::string& fullName);

/// What follows a change of replicas: the expressions of all ports are made anew from the lines.
void RebuildPortExpressions(Model& model);

}  // namespace FTS
