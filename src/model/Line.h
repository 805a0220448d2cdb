#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Enumerations.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// Names that stand, in a connection's expression, for the other ports of the line.
namespace Placeholder {
inline constexpr const char* Default = "DEFAULT";
inline constexpr const char* AndPort = "ANDPORT";
inline constexpr const char* OrPort = "ORPORT";
inline constexpr const char* OutputPort = "OUTPUTPORT";
}  // namespace Placeholder

/// A connection among ports inside one subsystem, with the failure logic of that connection.
class Line : public IPrintable, public IVisitable, public std::enable_shared_from_this<Line> {
 public:
  /// `messages` are the parts of the name between commas; an empty last part is dropped.
  Line(std::string initName, const std::shared_ptr<Subsystem>& initOwner, Model* initModel);
  ~Line() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  /// The key is "[class-][component.]port". A key without class speaks for all failure classes; one
  /// without component for a port of the component around the subsystem, seen from inside.
  void AddConnection(const std::string& key, std::shared_ptr<FaultTreeNode> expression);
  const std::string& GetName() const { return name; }
  std::shared_ptr<Subsystem> GetOwner() const { return owner.lock(); }

  // The line's logic at its ports: model/PortExpressions.cpp

  /// Finds the ports and ties the line to them, for `MakePortExpression`. Throws `VtnException`
  /// "Error! Cannot find port: ..." for a connection to nothing, with the line of the file
  /// (`ParseException`) where it is known, and logs a warning for each directed expression that
  /// finds no output port.
  void BuildPortExpressions();
  /// Forgets the ports again.
  void Untie();
  /// The template that the connection of that number gives its port for the class.
  std::shared_ptr<FaultTreeNode> MakePortExpression(std::size_t connection,
                                                    const std::string& failureClass);
  /// Gives `target` clones of the connections, in the place of its own, and the messages.
  void CopyExpressions(Line& target) const;
  /// A copy without connections; see `CopyExpressions`.
  std::shared_ptr<Line> Clone(const std::shared_ptr<Subsystem>& newOwner) const;

  std::map<std::string, std::shared_ptr<FaultTreeNode>> connections;  ///< Raw expressions, by key.
  std::map<std::string, std::int32_t> fileLines;  ///< Of connections in a text model, by key.
  LineOperator defaultOperator = LineOperator::OR;
  std::string description;
  bool directed = false;
  std::vector<std::string> messages;
  std::string name;
  std::weak_ptr<Subsystem> owner;
  Model* model;

 private:
  std::unique_ptr<LineEnds> ends;  // Made by `BuildPortExpressions`; null before.
};

}  // namespace FTS
