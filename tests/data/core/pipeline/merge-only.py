BrellStudio.Execute("FileLoad", "/out/house.qmdl")
BrellStudio.Execute("CheckExist", "-ds=house")
if BrellStudio.ReturnValue == True :
  BrellStudio.Execute("ContentDocument", "-n=house", "-op=e", "-fnp", "-tg=scd", "-st=u")
BrellStudio.Execute("Selection", "-cs=house", "-s=r")
BrellStudio.Execute("FileLoad", "/tmp/old.qmdl", "-opz=MergeContentQtr")
BrellStudio.Execute("FileSave", "-o=/out/house.qmdl", "--type=Save", "-ft=tq4xAscii", "-sao")
BrellStudio.Execute("File" ,"")

