// The names of the library for command lines, for headers: its own headers take seconds to compile.
#pragma once

namespace CLI {
class App;
class Option;
class Validator;
}  // namespace CLI
