#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// Where a failure crosses a component's boundary. Lines are tied to it once per synthesis; their
/// logic is built as a template when a failure class is asked for, and the walk from a top event
/// takes instances of the templates, by state.
class Port : public IPrintable, public IVisitable, public std::enable_shared_from_this<Port> {
 public:
  using NodePointer = std::shared_ptr<FaultTreeNode>;
  using ByClass = std::map<std::string, NodePointer>;

  Port(const std::string& initName, const std::shared_ptr<Component>& initOwner, Model* initModel);
  ~Port() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  const std::string& GetFullNameText() const { return fullNameText; }
  const std::string& GetLocalName() const { return localName; }
  std::shared_ptr<Component> GetOwner() const { return owner.lock(); }

  /// The logic of the lines outside the component for the class, instantiated for the state on
  /// first use; null when no line has one.
  NodePointer GetExternalExpression(const std::string& failureClass, const std::string& state);
  /// The same for the lines inside the component.
  NodePointer GetInternalExpression(const std::string& failureClass, const std::string& state);
  /// The deviation of the class in the state, copied from state "default" on first use when the
  /// state has none of its own; null when there is none.
  std::shared_ptr<OutputDeviation> GetOutputDeviation(const std::string& failureClass,
                                                      const std::string& state);

  /// What the lines outside (inside) the component say about the class, as one expression that
  /// synthesis never changes; null when no line says anything. A connection that names the class
  /// wins over one for all classes, the last of the former and the first of the latter.
  NodePointer GetExternalTemplate(const std::string& failureClass);
  NodePointer GetInternalTemplate(const std::string& failureClass);

  /// Ties a connection of a line to this port. `failureClass` is empty for one that speaks for all
  /// classes; `inside` tells that the line lies inside the component.
  void AddLineEnd(const std::shared_ptr<Line>& line, std::size_t connection,
                  const std::string& failureClass, bool inside);
  /// Unties all lines and forgets their templates; instances stay.
  void ForgetLineEnds();
  void AddOutputDeviation(const std::shared_ptr<OutputDeviation>& deviation,
                          const std::string& state);
  void AddInputProxy(const std::shared_ptr<InputDeviationProxy>& proxy, const std::string& state);
  /// The proxy that all lines share for the class, made on first use; its name is class, "-", full
  /// name, the full name alone for an empty class.
  std::shared_ptr<OutputDeviationProxy> GetOrMakeOutputProxy(const std::string& failureClass);
  std::shared_ptr<InputDeviationProxy> GetOrMakeInputProxy(const std::string& failureClass);

  /// Forgets the instances of the last synthesis; templates stay. Trees that hold an instance keep
  /// it, and its graph is taken apart by `Clear`.
  void ClearInstances();
  /// Drops all that synthesis has left here, the templates included, and takes the graphs apart.
  void Clear();

  std::weak_ptr<Component> owner;
  std::map<std::string, ByClass> externalExpressions;  ///< Instances, by state.
  std::map<std::string, ByClass> internalExpressions;
  ByClass externalTemplates;  ///< Those asked for by themselves; null for a class without a line.
  ByClass internalTemplates;
  std::map<std::string, std::map<std::string, std::shared_ptr<OutputDeviation>>> outputDeviations;
  std::map<std::string, std::shared_ptr<OutputDeviationProxy>> outputProxies;
  std::map<std::string, std::map<std::string, std::shared_ptr<InputDeviationProxy>>> inputProxies;
  std::vector<NodePointer> expressionRoots;  ///< Every root held here, instance or template.
  Model* model;

 private:
  /// One connection of one line.
  struct LineEnd {
    std::string failureClass;  // Empty: all classes.
    std::weak_ptr<Line> line;
    std::size_t connection;
  };

  NodePointer FindTemplate(ByClass& templates, const std::vector<LineEnd>& ends,
                           const std::string& failureClass);
  NodePointer KeepTemplate(ByClass& templates, const std::vector<LineEnd>& ends,
                           const std::string& failureClass);
  NodePointer BuildTemplate(const std::vector<LineEnd>& ends, const std::string& failureClass);
  NodePointer Instantiate(std::map<std::string, ByClass>& instances, const NodePointer& source,
                          const std::string& failureClass, const std::string& state);

  std::string localName;
  std::string fullNameText;
  std::vector<LineEnd> externalEnds;  // In the order of lines and keys.
  std::vector<LineEnd> internalEnds;
};

}  // namespace FTS
