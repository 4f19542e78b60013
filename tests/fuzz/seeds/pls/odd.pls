[playlist]
  File1= x.mp3
File2=﻿Café.mp3
File3=\\server\share\y.mp3
