// commands.h: the subcommands of zqmath, each given the arguments after its name.
#ifndef ZQMATH_TOOLS_COMMANDS_H
#define ZQMATH_TOOLS_COMMANDS_H

#include <string>
#include <vector>

namespace zq::tool {

/// `zqmath tin`: triangulates height samples and writes the mesh. Returns the exit status.
int RunTin(const std::vector<std::string>& args);
/// `zqmath mesh`: meshes a heightmap within an error and writes the mesh.
int RunMesh(const std::vector<std::string>& args);
/// `zqmath eval`: evaluates a postfix expression and prints the result.
int RunEval(const std::vector<std::string>& args);
/// `zqmath version`: the library's version and release signature.
int RunVersion(const std::vector<std::string>& args);

} // namespace zq::tool

#endif
