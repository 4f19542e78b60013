[playlist]
File2=http://b.invalid/2
file1 = /relative
File999999999=x
#EXTM3U
@@@
