#include "tools/artwork/svgFile.h"

#include <cstdio>

#include "tools/artwork/Failure.h"
#include "tools/artwork/OutputFile.h"

namespace artwork {

void writeSvg(const std::string& path, const tessaluna::backend::svg::SvgCanvas& canvas) {
  if (canvas.error()) throw Failure(path + ": " + *canvas.error());
  const std::string text = canvas.document();
  OutputFile file(path);
  // commit() reports what could not be written.
  std::fwrite(text.data(), 1, text.size(), file.stream());
  file.commit();
}

}  // namespace artwork
