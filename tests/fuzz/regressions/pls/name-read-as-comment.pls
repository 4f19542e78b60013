[playlist]
File1=#hash.mp3
File2=file:///tmp/%20lead%0Abreak.mp3
File3= ﻿bom.mp3
NumberOfEntries=3
