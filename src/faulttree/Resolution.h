#pragma once

#include <memory>
#include <string>

#include "faulttree/FaultTreeNode.h"

namespace FTS {

// The steps that the walks of synthesis share; the walks themselves are operations of `Model`. The
// port's component must have a current implementation, else `VtnException` is thrown.

/// What counts for the port's component by its block type: its own annotation, and its inside.
bool HasAnnotation(const Port& port);
bool HasInside(const Port& port);
bool IsPropagator(const Port& port);

/// Adds a line's expression (may be null) to `parent` and resolves it unless it is; see
/// `Model::ResolveConnection` for `from` and `descending`.
void AddLineLogic(Model& model, FaultTreeNode& parent, const FaultTreeNode::Pointer& expression,
                  const Component& from, bool descending);
/// Adds what arrives at the other one of a propagator's two ports.
void AddPassThrough(Model& model, FaultTreeNode& parent, const Port& port,
                    const std::string& failureClass);
/// Adds the expression of the port's output deviation, resolved.
void AddAnnotation(Model& model, FaultTreeNode& parent, Port& port,
                   const std::string& failureClass);
/// Resolves the logic of the lines inside the port's component and joins it to the annotation in
/// one OR gate. Either may be null; the result is null when both are.
FaultTreeNode::Pointer JoinInside(Model& model, const Port& port,
                                  const FaultTreeNode::Pointer& annotation,
                                  const FaultTreeNode::Pointer& inside);

/// The deviation that a goto names by label or by an exported deviation's full name, in which the
/// prefix of the default perspective may be left out; null when there is none:
/// faulttree/Gotos.cpp.
std::shared_ptr<Deviation> FindNamedTarget(const Model& model, const std::string& name);
/// What the host exports under the name that something allocated to it uses; null when there is
/// none: faulttree/Gotos.cpp. Throws `VtnException` for a host without current implementation.
std::shared_ptr<ExportedDeviation> FindExportedDeviation(const Component& host,
                                                         const std::string& name);
/// Hangs the logic of its target under a goto: faulttree/Gotos.cpp. Throws `VtnException` for a
/// target that does not exist.
void ResolveGoto(Model& model, GotoNode& node);
/// Hangs the logic of the host's exported deviation under the proxy: faulttree/Gotos.cpp. Throws
/// `VtnException` when the owner is not allocated to a host.
void ResolveAllocation(Model& model, ExportedDeviationProxy& proxy);

}  // namespace FTS
