// Passes everything on to the shell and counts it as a box of ours meanwhile: the
// shell may ask there, as it does before it opens a file from another machine.
#pragma once

#include "platform/shell.h"
#include "ui/win/toolkit/modal.h"

namespace varnowick {

class ModalShell : public Shell {
 public:
  ModalShell(Shell& inner, ModalDepth& depth) : inner_(inner), depth_(depth) {}
  int execute(OwnerWindow owner, const std::wstring& verb, const std::wstring& file,
              const std::wstring& parameters, const std::wstring& directory) override {
    const ModalDepth::Scope scope(depth_);
    return inner_.execute(owner, verb, file, parameters, directory);
  }
  bool run(const std::wstring& commandLine) override {
    const ModalDepth::Scope scope(depth_);
    return inner_.run(commandLine);
  }

 private:
  Shell& inner_;
  ModalDepth& depth_;
};

}  // namespace varnowick
