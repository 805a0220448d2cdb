#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/HierarchicalName.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// Where a failure crosses a component's boundary. Lines leave their logic here, once per
/// synthesis, as templates by failure class; the walk from a top event takes instances of them, by
/// state.
class Port : public IPrintable, public IVisitable, public std::enable_shared_from_this<Port> {
 public:
  using NodePointer = std::shared_ptr<FaultTreeNode>;
  using ByClass = std::map<std::string, NodePointer>;

  Port(const std::string& initName, const std::shared_ptr<Component>& initOwner, Model* initModel);
  ~Port() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  const std::string& GetFullNameText() const { return fullNameText; }
  const std::string& GetLocalName() const { return fullName.Name(); }
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

  void AddLineExpression(ByClass expressions);
  /// Store a template; without `replace` one that is there stays.
  void SetInternalTemplate(const std::string& failureClass, const NodePointer& expression,
                           bool replace);
  void SetExternalTemplate(const std::string& failureClass, const NodePointer& expression,
                           bool replace);
  void AddOutputDeviation(const std::shared_ptr<OutputDeviation>& deviation,
                          const std::string& state);
  void AddInputProxy(const std::shared_ptr<InputDeviationProxy>& proxy, const std::string& state);
  /// The proxy that all lines share for the class, made on first use; its name is class, "-", full
  /// name, the full name alone for an empty class.
  std::shared_ptr<OutputDeviationProxy> GetOrMakeOutputProxy(const std::string& failureClass);
  std::shared_ptr<InputDeviationProxy> GetOrMakeInputProxy(const std::string& failureClass);

  /// Takes clones of the other port's templates and expression roots.
  void CopyFrom(Port& other);
  /// Drops the instances of the last synthesis; templates stay.
  void ClearInstances();
  /// Drops all that synthesis has left here, the templates included.
  void Clear();

  std::weak_ptr<Component> owner;
  std::map<std::string, ByClass> externalExpressions;  ///< Instances, by state.
  std::map<std::string, ByClass> internalExpressions;
  ByClass externalTemplates;
  ByClass internalTemplates;
  HierarchicalName fullName;
  std::map<std::string, std::map<std::string, std::shared_ptr<OutputDeviation>>> outputDeviations;
  std::map<std::string, std::shared_ptr<OutputDeviationProxy>> outputProxies;
  std::map<std::string, std::map<std::string, std::shared_ptr<InputDeviationProxy>>> inputProxies;
  std::vector<NodePointer> expressionRoots;  ///< Every root held here, instance or template.
  std::vector<ByClass> lineExpressions;      ///< One map per connected line.
  Model* model;

 private:
  NodePointer Instantiate(std::map<std::string, ByClass>& instances, const ByClass& templates,
                          const std::string& failureClass, const std::string& state);

  std::string fullNameText;
};

}  // namespace FTS
